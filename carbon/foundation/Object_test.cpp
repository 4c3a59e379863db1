// Owners of objects, and which references are alive.
#include "Object.h"
#include "StringTest.h"

#include <vector>

using namespace lampblack::foundation;

namespace {

int gEnded = 0;

class Thing final : public Object {
public:
    static CFTypeID ID()
    {
        static const CFTypeID id = NewTypeID();
        return id;
    }

    explicit Thing(int inValue) : Object(ID()), fValue(inValue) {}
    ~Thing() override { ++gEnded; }

    bool Equals(const Object& inOther) const override
    {
        return fValue == static_cast<const Thing&>(inOther).fValue;
    }
    CFHashCode Hash() const override { return (CFHashCode)fValue; }
    std::u16string Description() const override { return u"thing"; }

private:
    int fValue;
};

} // namespace

TEST_CASE("CFRelease: the last owner's ends the object")
{
    gEnded = 0;
    const CFTypeRef thing = Reference<CFTypeRef>(new Thing(1));
    CHECK(CFGetRetainCount(thing) == 1);
    CHECK(CFRetain(thing) == thing);
    CHECK(CFGetRetainCount(thing) == 2);
    CFRelease(thing);
    CHECK(gEnded == 0);
    CHECK(CFGetTypeID(thing) == Thing::ID());
    CFRelease(thing);
    CHECK(gEnded == 1);
    CFRelease(thing);
    CHECK(gEnded == 1);
}

TEST_CASE("CFRetain and its kin: null, ended and foreign references get the neutral answer")
{
    int foreign = 0;
    for (const CFTypeRef reference : std::vector<CFTypeRef>{ nullptr, EndedString(), &foreign }) {
        CHECK(CFRetain(reference) == nullptr);
        CHECK(CFGetRetainCount(reference) == 0);
        CHECK(CFGetTypeID(reference) == 0);
        CHECK(CFHash(reference) == 0);
        CHECK_FALSE(CFEqual(reference, reference));
        CHECK_FALSE(CFEqual(reference, CFSTR("a")));
        CFRelease(reference);
        CHECK(Find<Thing>(reference) == nullptr);
    }
}

TEST_CASE("CFRelease: the address of an ended object does not soon become a live one")
{
    const CFTypeRef ended = EndedString();
    std::vector<CFTypeRef> others;
    for (int i = 0; i < 200; ++i) {
        others.push_back(CFStringCreateMutable(nullptr, 0));
        CHECK(others.back() != ended);
    }
    for (const CFTypeRef other : others)
        CFRelease(other);
}

TEST_CASE("CFEqual: objects of one type by their contents, of two types never")
{
    const StReference<CFTypeRef> one(Reference<CFTypeRef>(new Thing(1))),
        same(Reference<CFTypeRef>(new Thing(1))), other(Reference<CFTypeRef>(new Thing(2)));
    CHECK(CFEqual(one, one));
    CHECK(CFEqual(one, same));
    CHECK(CFHash(one) == CFHash(same));
    CHECK_FALSE(CFEqual(one, other));
    CHECK_FALSE(CFEqual(one, CFSTR("thing")));
    CHECK(Find<Thing>(CFSTR("thing")) == nullptr);
    CHECK(Thing::ID() != CFStringGetTypeID());
}

TEST_CASE("CFSTR: one constant for one text, whatever is released")
{
    const CFStringRef constant = CFSTR("constant");
    CHECK(constant == CFSTR("constant"));
    CHECK(constant != CFSTR("another"));
    for (int i = 0; i < 3; ++i)
        CFRelease(constant);
    CHECK(Utf8Of(constant) == "constant");
    CFRetain(constant);
    CHECK(CFGetRetainCount(constant) > 1000);
    CHECK(Utf8Of(CFSTR("caf\xC3\xA9")) == "caf\xC3\xA9");
    CHECK(Utf8Of(CFSTR("caf\x8E")) == "caf\xC3\xA9");
    CHECK(CFStringGetLength(CFSTR("")) == 0);
    CHECK(__CFStringMakeConstantString(nullptr) == nullptr);
}
