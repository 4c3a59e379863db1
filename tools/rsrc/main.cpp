// The resource file tool; docs/rsrc.md is its manual.
#include "Commands.h"

#include <iostream>

int main(int argc, char** argv)
{
    std::ios::sync_with_stdio(false);
    return lampblack::rsrc::RunCommand(std::vector<std::string>(argv + 1, argv + argc), std::cout, std::cerr);
}
