// What stands behind an AEDesc. Values are shared and are changed only by their single owner, so that a copy
// of a descriptor, or of an item of a list, copies no bytes. Begin at ValueOf and MakeDesc.
#ifndef LAMPBLACK_PROCESS_DESCRIPTORS_H
#define LAMPBLACK_PROCESS_DESCRIPTORS_H

#include <Carbon/AEDataModel.h>

#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace lampblack::process {

struct DescItem;

enum class Shape { Data, List, Record };

struct DescValue {
    Shape shape = Shape::Data;
    std::string bytes;           // of data
    std::vector<DescItem> items; // of a list or record
    int depth = 0;               // of lists within lists, at most
};

// A type and its value; a null value is one without data.
struct Typed {
    DescType type = typeNull;
    std::shared_ptr<DescValue> value;

    Shape ShapeOf() const { return value ? value->shape : Shape::Data; }
    std::string_view Bytes() const { return value ? std::string_view(value->bytes) : std::string_view(""); }
};

struct DescItem {
    AEKeyword keyword = typeWildCard;
    Typed content;
};

inline constexpr int kDeepest = 256; // lists in lists; what takes them apart recurses

Typed DataOf(DescType, std::string_view bytes);

// Errors: paramErr for null, errAENotAEDesc.
OSErr ValueOf(const AEDesc*, Typed* outValue);

// As above, and the value may be changed: it is this descriptor's own.
OSErr OwnValueOf(AEDesc*, DescValue** outValue);

// A new descriptor that the caller disposes of. Nothing is released of what *outDesc was.
OSErr MakeDesc(Typed, AEDesc* outDesc);

// Errors: paramErr for a negative size or no bytes where some should be, memFullErr for more than a block
// holds.
OSErr CheckBytes(const void* inBytes, Size inSize);

// The work's result; memFullErr when memory runs out in it.
template <class Work>
OSErr WithMemory(Work inWork)
{
    try {
        return inWork();
    } catch (const std::bad_alloc&) {
        return memFullErr;
    } catch (const std::length_error&) {
        return memFullErr;
    }
}

} // namespace lampblack::process

#endif
