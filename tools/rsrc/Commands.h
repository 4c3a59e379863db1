// The commands of the tool. Each writes to the given streams and answers the exit code: 0 done, 1 failed, 2
// called wrongly. Begin at RunCommand.
#ifndef LAMPBLACK_RSRC_COMMANDS_H
#define LAMPBLACK_RSRC_COMMANDS_H

#include "Arguments.h"

namespace lampblack::rsrc {

// What main does with its arguments, the program's name left out.
int RunCommand(const std::vector<std::string>& inArguments, std::ostream& ioOutput, std::ostream& ioErrors);

// Each takes the words behind its name. They throw UsageError, or std::runtime_error with a whole sentence.
using Words = std::vector<std::string>;
int ListCommand(const Words&, Streams);
int GetCommand(const Words&, Streams);
int DumpCommand(const Words&, Streams);
int BuildCommand(const Words&, Streams);
int ConvertCommand(const Words&, Streams);
int CheckCommand(const Words&, Streams);
int DiffCommand(const Words&, Streams);
int RenderCommand(const Words&, Streams);

} // namespace lampblack::rsrc

#endif
