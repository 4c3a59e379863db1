// What the shared library shows: everything between these two lines of a header.
#ifndef LAMPBLACK_UTIL_VISIBILITY_H
#define LAMPBLACK_UTIL_VISIBILITY_H

#define LAMPBLACK_BEGIN _Pragma("GCC visibility push(default)")
#define LAMPBLACK_END _Pragma("GCC visibility pop")

// The toolkit's signature, the byte 0xA9 and the letters K, R, Z: signs its control IDs and properties.
enum : unsigned { kToolkitSignature = 0xA94B525A };

#endif
