// From the members of an icon to one picture: which size and depth suit a place, and how each is read.
#ifndef LAMPBLACK_ICONS_MEMBERS_H
#define LAMPBLACK_ICONS_MEMBERS_H

#include "icons/IconKinds.h"
#include "icons/IconPicture.h"

#include <foundation/BigEndian.h>

#include <functional>

namespace lampblack::icons {

using foundation::Bytes;

// Answers the data of a member; empty when there is none. The bytes live until the next call.
using Getter = std::function<Bytes(Kind)>;

// The depth of the current port; 32 without one.
int PortDepth();

// Reads the member that suits a rectangle and a depth best: the size that the rectangle has, else a larger,
// else a smaller one; the depth of the port, else the nearest that it can show. Answers false when there is
// none at all.
bool ReadBest(const Getter&, const Rect& where, int depth, IconPicture* out);

// The bits of one icon with, or without, as many of a mask behind them.
void ReadBits(Bytes icon, Bytes mask, int width, int height, IconPicture* out);

} // namespace lampblack::icons

#endif
