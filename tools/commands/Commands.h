// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace HovletsTool {

// Each command registers itself, with its options, from a source file of its own.

class Program;

void addCheckCommand(Program &program);
void addCoverageCommand(Program &program);
void addImportCommand(Program &program);
void addListCommand(Program &program);
void addNewCommand(Program &program);
void addPreviewCommand(Program &program);
void addRenderCommand(Program &program);
void addShowCommand(Program &program);

} // namespace HovletsTool
