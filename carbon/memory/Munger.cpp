// Munger: search and replace within a handle.
#include "Blocks.h"

#include <cstring>
#include <string>
#include <string_view>

using namespace lampblack::memory;

namespace {

struct Found {
    long offset = -1;
    long length = 0;
};

// Where the target is from an offset on: whole, or else as the rest of the text, which may be only its
// beginning.
Found Search(std::string_view inText, long inOffset, std::string_view inTarget)
{
    const size_t whole = inText.find(inTarget, (size_t)inOffset);
    if (whole != std::string_view::npos)
        return { (long)whole, (long)inTarget.size() };
    const std::string_view rest = inText.substr((size_t)inOffset);
    if (!rest.empty() && inTarget.starts_with(rest))
        return { inOffset, (long)rest.size() };
    return {};
}

// What is to be replaced, from the arguments of Munger.
Found Target(std::string_view inText, long inOffset, const void* inTarget, long inLength)
{
    const long rest = (long)inText.size() - inOffset;
    if (!inTarget)
        return { inOffset, inLength < 0 || inLength > rest ? rest : inLength };
    if (inLength <= 0)
        return { inOffset, 0 };
    return Search(inText, inOffset, std::string_view((const char*)inTarget, (size_t)inLength));
}

// Replaces bytes of a block. The new ones must not lie within it.
OSErr Replace(HandleBlock* ioBlock, Found inPlace, const void* inBytes, long inLength)
{
    const Size oldSize = ioBlock->size, newSize = oldSize - inPlace.length + inLength;
    const Size behind = oldSize - inPlace.offset - inPlace.length;
    if ((ioBlock->state & kHandleLockedMask) && newSize > ioBlock->capacity)
        return memLockedErr;
    if (newSize > oldSize && !Resize(ioBlock, newSize))
        return memFullErr;
    char* at = ioBlock->data + inPlace.offset;
    std::memmove(at + inLength, at + inPlace.length, (size_t)behind);
    std::memcpy(at, inBytes, (size_t)inLength);
    SetSize(ioBlock, newSize);
    return noErr;
}

} // namespace

long Munger(Handle h, long offset, const void* ptr1, long len1, const void* ptr2, long len2)
{
    OSErr error;
    HandleBlock* block = FindHandle(h, &error);
    if (block && !block->data)
        error = nilHandleErr;
    else if (block && (offset < 0 || offset > block->size || (ptr2 && len2 < 0)))
        error = paramErr;
    SetError(error);
    if (error != noErr)
        return -1;

    const std::string_view text(block->data, (size_t)block->size);
    const Found found = Target(text, offset, ptr1, len1);
    if (found.offset < 0 || !ptr2)
        return found.offset;
    // The new bytes may lie in the block itself, which moves.
    const bool isInside = (const char*)ptr2 >= block->data && (const char*)ptr2 < block->data + block->size;
    if (len2 > kLargestBlock - block->size)
        error = memFullErr;
    else if (isInside && len2 > block->data + block->size - (const char*)ptr2)
        error = paramErr;
    else if (isInside)
        error = Replace(block, found, std::string((const char*)ptr2, (size_t)len2).data(), len2);
    else
        error = Replace(block, found, ptr2, len2);
    SetError(error);
    return error == noErr ? found.offset + len2 : -1;
}
