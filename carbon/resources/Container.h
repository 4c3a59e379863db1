// The container forms of resource files, under the name by which the floors above and the tools know them;
// the File Manager, which needs the Finder information in them, owns the code.
#ifndef LAMPBLACK_RESOURCES_CONTAINER_H
#define LAMPBLACK_RESOURCES_CONTAINER_H

#include <files/Container.h>
#include <files/ForkLocator.h>

namespace lampblack::resources {

using files::Container;
using files::Form;
using files::FormName;
using files::LocatedForks;
using files::LocateForks;
using files::MappedFile;
using files::ReadContainer;

} // namespace lampblack::resources

#endif
