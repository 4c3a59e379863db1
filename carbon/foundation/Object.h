// The objects behind CFTypeRefs: counted references, and a registry of those that are alive. A type joins by
// deriving from Object; a reference to it is the address of its Object:
//
//     class TreeObject final : public Object {
//     public:
//         static CFTypeID ID();                                   // { static const CFTypeID id =
//         NewTypeID(); ... } TreeObject() : Object(ID()) {} bool Equals(const Object&) const override; //
//         called with its own type only CFHashCode Hash() const override; std::u16string Description() const
//         override;            // what %@ shows
//     };
//
//     return Reference<CFTreeRef>(new TreeObject);                // the caller owns it
//     TreeObject* tree = Find<TreeObject>(inReference);           // null unless alive and of that type
#ifndef LAMPBLACK_FOUNDATION_OBJECT_H
#define LAMPBLACK_FOUNDATION_OBJECT_H

#include <Carbon/CFBase.h>

#include <string>

namespace lampblack::foundation {

class Object {
public:
    explicit Object(CFTypeID inType);
    virtual ~Object();
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    // Storage of the objects that ended last is kept for a while, so that a stale reference does not soon
    // become a live one again.
    static void* operator new(size_t);
    static void operator delete(void*);

    CFTypeID Type() const { return fType; }
    CFIndex Owners() const { return fOwners; }

    void Retain();
    void Release();      // may end this object
    void MakeConstant(); // it never ends

    virtual bool Equals(const Object& inOther) const { return this == &inOther; }
    virtual CFHashCode Hash() const { return (CFHashCode)(uintptr_t)this >> 4; }
    virtual std::u16string Description() const = 0;

private:
    CFTypeID fType;
    CFIndex fOwners = 1;
};

CFTypeID NewTypeID();

Object* FindObject(CFTypeRef); // null unless alive

template <class Type>
Type* Find(CFTypeRef inReference)
{
    Object* object = FindObject(inReference);
    return object && object->Type() == Type::ID() ? static_cast<Type*>(object) : nullptr;
}

template <class Ref>
Ref Reference(const Object* inObject)
{
    return (Ref)(const void*)inObject;
}

} // namespace lampblack::foundation

#endif
