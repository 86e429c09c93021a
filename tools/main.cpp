// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"
#include "Program.h"

using namespace HovletsTool;

int main(int argc, char **argv)
{
    Program program;
    addAttachCommand(program);
    addCheckCommand(program);
    addCoverageCommand(program);
    addImportCommand(program);
    addListCommand(program);
    addNewCommand(program);
    addPreviewCommand(program);
    addRenderCommand(program);
    addShowCommand(program);
    addTranslateCommand(program);
    return static_cast<int>(program.run(argc, argv));
}
