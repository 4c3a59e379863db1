// The commands of the tool. Each writes to the given streams and answers the exit code: 0 done, 1 failed, 2
// called wrongly.
#ifndef LAMPBLACK_RSRC_COMMANDS_H
#define LAMPBLACK_RSRC_COMMANDS_H

#include <ostream>
#include <string>
#include <vector>

namespace lampblack::rsrc {

// What main does with its arguments, the program's name left out.
int RunCommand(const std::vector<std::string>& inArguments, std::ostream& ioOutput, std::ostream& ioErrors);

} // namespace lampblack::rsrc

#endif
