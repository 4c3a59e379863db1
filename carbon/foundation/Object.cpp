// The registry of objects that are alive, and the calls that every type answers.
#include "Object.h"

#include "MacRoman.h"

#include <memory/ReferenceTable.h>

#include <array>
#include <cstdio>
#include <limits>
#include <new>
#include <utility>

namespace lampblack::foundation {
namespace {

constexpr CFIndex kConstant = std::numeric_limits<CFIndex>::max();

// Never destroyed: strings made by CFSTR outlive everything that could destroy it.
memory::AddressSet& Living()
{
    static memory::AddressSet& living = *new memory::AddressSet;
    return living;
}

void* Quarantine(void* inStorage)
{
    static std::array<void*, 256> ended = {};
    static size_t oldest = 0;
    return std::exchange(ended[oldest++ % ended.size()], inStorage);
}

} // namespace

Object::Object(CFTypeID inType) : fType(inType)
{
    Living().Insert(this);
}

Object::~Object()
{
    Living().Erase(this);
}

void* Object::operator new(size_t inSize)
{
    return ::operator new(inSize);
}

void Object::operator delete(void* inStorage)
{
    ::operator delete(Quarantine(inStorage));
}

void Object::Retain()
{
    if (fOwners != kConstant)
        ++fOwners;
}

void Object::Release()
{
    if (fOwners != kConstant && --fOwners == 0)
        delete this;
}

void Object::MakeConstant()
{
    fOwners = kConstant;
}

CFTypeID NewTypeID()
{
    static CFTypeID last = 0;
    return ++last;
}

Object* FindObject(CFTypeRef inReference)
{
    return Living().Contains(inReference) ? (Object*)inReference : nullptr;
}

} // namespace lampblack::foundation

using namespace lampblack::foundation;

// Their addresses tell them apart; there is nothing in them.
const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFAllocatorRef kCFAllocatorSystemDefault = (CFAllocatorRef)(const void*)&kCFAllocatorSystemDefault;
const CFAllocatorRef kCFAllocatorMalloc = (CFAllocatorRef)(const void*)&kCFAllocatorMalloc;
const CFAllocatorRef kCFAllocatorNull = (CFAllocatorRef)(const void*)&kCFAllocatorNull;

CFTypeRef CFRetain(CFTypeRef cf)
{
    Object* object = FindObject(cf);
    if (object)
        object->Retain();
    return object;
}

void CFRelease(CFTypeRef cf)
{
    if (Object* object = FindObject(cf))
        object->Release();
}

CFIndex CFGetRetainCount(CFTypeRef cf)
{
    const Object* object = FindObject(cf);
    return object ? object->Owners() : 0;
}

CFTypeID CFGetTypeID(CFTypeRef cf)
{
    const Object* object = FindObject(cf);
    return object ? object->Type() : 0;
}

Boolean CFEqual(CFTypeRef cf1, CFTypeRef cf2)
{
    const Object* one = FindObject(cf1);
    const Object* other = FindObject(cf2);
    if (!one || !other || one->Type() != other->Type())
        return false;
    return one == other || one->Equals(*other);
}

CFHashCode CFHash(CFTypeRef cf)
{
    const Object* object = FindObject(cf);
    return object ? object->Hash() : 0;
}

void CFShow(CFTypeRef obj)
{
    const Object* object = FindObject(obj);
    const std::string text = object ? Utf8FromUtf16(object->Description()) : "(null)";
    std::fprintf(stderr, "%s\n", text.c_str());
}
