// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace HovletsTool {

// Each command, or group of commands, has a source file, which registers it and its options.

class Program;

void addAttachCommand(Program &program);
void addCheckCommand(Program &program);
void addCoverageCommand(Program &program);
void addImportCommand(Program &program);
void addListCommand(Program &program);
void addNewCommand(Program &program);
void addPreviewCommand(Program &program);
void addRenderCommand(Program &program);
void addShowCommand(Program &program);
void addTranslateCommand(Program &program);

} // namespace HovletsTool
