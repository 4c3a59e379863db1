// Counts of what may change which resource a search finds, for floors that keep what they made of resources.
#ifndef LAMPBLACK_RESOURCES_CHAINCHANGES_H
#define LAMPBLACK_RESOURCES_CHAINCHANGES_H

namespace lampblack::resources {

inline constinit unsigned gChainChanges = 1; // a file was opened or closed, or another one made current
inline constinit unsigned gChainEdits = 0;   // a resource was added, removed, renumbered or marked as changed

} // namespace lampblack::resources

#endif
