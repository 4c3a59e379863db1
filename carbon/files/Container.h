// The forms in which a Macintosh file lives on other systems, told apart by their bytes: a bare resource
// fork, AppleDouble, AppleSingle, MacBinary I to III, BinHex 4.0. Begin at ReadContainer. Pure: knows no
// file. Layouts: RFC 1740 (AppleSingle, AppleDouble), RFC 1741 (BinHex), the MacBinary III paper of 1996.
#ifndef LAMPBLACK_FILES_CONTAINER_H
#define LAMPBLACK_FILES_CONTAINER_H

#include <Carbon/Files.h>
#include <foundation/BigEndian.h>

#include <functional>
#include <string>
#include <vector>

namespace lampblack::files {

using foundation::Bytes;

enum class Form : uint8_t {
    None, // not a container: the bytes are an ordinary data fork
    RawFork,
    AppleDouble,
    AppleSingle,
    MacBinary,
    BinHex
};

const char* FormName(Form);

// Seconds since midnight, 1 January 1904, as the form keeps them (local time in MacBinary, Greenwich in
// AppleSingle, which counts from 2000 and is converted); 0 when not known.
struct FileDates {
    uint32_t created = 0, modified = 0;
};

// What was found. The forks lie within the bytes that were read or, for BinHex, within `decoded`.
struct Container {
    Form form = Form::None;
    bool hasResourceFork = false; // it may be empty
    bool hasDataFork = false;
    bool hasFinderInfo = false;
    Bytes resourceFork;
    Bytes dataFork;
    FInfo finderInfo = {};
    FXInfo extendedFinderInfo = {};
    FileDates dates;
    std::string name; // Mac Roman; empty when the form keeps none
    std::vector<std::string>
        problems; // what is damaged, a sentence each; undamaged parts are delivered all the same
    std::vector<uint8_t> decoded;
};

// ReadContainer
//
// Decides by content what the bytes are and finds the parts. A container that announces itself (by a magic
// number, or as BinHex) and is damaged has problems; bytes that merely resemble one are Form::None.
Container ReadContainer(Bytes);

// ReadFront
//
// What the first bytes of a file tell of it, when those are enough: it is no container, or an AppleDouble or
// AppleSingle without damage, whose forks are told of by their places. Answers false when more must be read,
// and has then said nothing. inFront answers the first bytes, as many as it is asked for or all there are;
// inSize is how many there are.
struct FrontParts {
    struct Place {
        size_t offset = 0, length = 0;
    };
    Place resourceFork, dataFork;
};
bool ReadFront(const std::function<Bytes(size_t inWanted)>& inFront, size_t inSize, Container* outContainer,
               FrontParts* outPlaces);

// Whether a header of MacBinary stands at the front, with its check sum or, in version I, with everything
// plausible.
bool IsMacBinary(Bytes);

// Whether the bytes are a resource fork: the map lies within them, and the type and reference lists within
// the map.
bool IsRawFork(Bytes);

// A cyclic redundancy check as both BinHex and MacBinary use it: polynomial 0x1021, high bit first.
uint16_t Crc16(Bytes, uint16_t inStart = 0);

// The 16 bytes of Finder information, big-endian, and back.
FInfo FinderInfoFromBytes(const uint8_t* inSixteen);
void FinderInfoToBytes(const FInfo&, uint8_t* outSixteen);
FXInfo ExtendedInfoFromBytes(const uint8_t* inSixteen);
void ExtendedInfoToBytes(const FXInfo&, uint8_t* outSixteen);

} // namespace lampblack::files

#endif
