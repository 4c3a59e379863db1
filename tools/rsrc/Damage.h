// What is wrong with a file that is, or was, a container of a Macintosh file. Pure: judges bytes. Begin at
// FindDamage.
#ifndef LAMPBLACK_RSRC_DAMAGE_H
#define LAMPBLACK_RSRC_DAMAGE_H

#include <files/Container.h>

#include <string>
#include <vector>

namespace lampblack::rsrc {

// A sentence for each fault of the bytes as a container: cut off, converted line ends, a wrong check sum, a
// fork that cannot be read. Nothing for a sound one, nor for bytes that never were one.
std::vector<std::string> FindDamage(files::Bytes);

// What the Finder information promises and the resource fork does not keep; empty when all is well.
std::vector<std::string> FindBrokenPromises(const FInfo&, files::Bytes inResourceFork);

} // namespace lampblack::rsrc

#endif
