// Typed values in the preference file: each the memory image of its value.
#include <algorithm>
#include <cstring>

#include "prefs/PreferenceEntries.h"
#include "prefs/Preferences.h"

namespace {

using lampblack::prefs::CopyEntry;
using lampblack::prefs::FetchEntry;
using lampblack::prefs::FetchValue;
using lampblack::prefs::kWholeEntry;

template <typename Value>
OSStatus Add(const Value& inValue, OSType inType, SInt16 inID, ConstStr255Param inName)
{
    return AddPreferenceData(&inValue, sizeof inValue, inType, inID, inName);
}

// Null is refused by AddPreferenceData.
template <typename Value>
OSStatus AddAt(const Value* inValue, OSType inType, SInt16 inID, ConstStr255Param inName)
{
    return AddPreferenceData(inValue, sizeof *inValue, inType, inID, inName);
}

// Whether an entry is one whole string; a file may hold anything.
bool IsPString(Handle inEntry)
{
    const Size size = inEntry ? GetHandleSize(inEntry) : 0;
    return size > 0 && size > static_cast<unsigned char>(**inEntry);
}

bool IsCString(Handle inEntry)
{
    const Size size = inEntry ? GetHandleSize(inEntry) : 0;
    return size > 0 && std::memchr(*inEntry, 0, static_cast<size_t>(size)) != nullptr;
}

} // namespace

OSStatus AddUInt32Preference(UInt32 inValue, OSType inType, SInt16 inID, ConstStr255Param inName)
{
    return Add(inValue, inType, inID, inName);
}

OSStatus AddSInt32Preference(SInt32 inValue, OSType inType, SInt16 inID, ConstStr255Param inName)
{
    return Add(inValue, inType, inID, inName);
}

OSStatus AddSInt16Preference(SInt16 inValue, OSType inType, SInt16 inID, ConstStr255Param inName)
{
    return Add(inValue, inType, inID, inName);
}

OSStatus AddRGBColorPreference(RGBColor inValue, OSType inType, SInt16 inID, ConstStr255Param inName)
{
    return Add(inValue, inType, inID, inName);
}

OSStatus AddRectPreference(const Rect* inValue, OSType inType, SInt16 inID, ConstStr255Param inName)
{
    return AddAt(inValue, inType, inID, inName);
}

OSStatus AddPStringPreference(ConstStr255Param inValue, OSType inType, SInt16 inID, ConstStr255Param inName)
{
    return AddPreferenceData(inValue, inValue ? inValue[0] + 1 : 1, inType, inID, inName);
}

OSStatus AddFSSpecPreference(const FSSpec* inValue, OSType inType, SInt16 inID, ConstStr255Param inName)
{
    return AddAt(inValue, inType, inID, inName);
}

OSStatus AddFloat64Preference(double inValue, OSType inType, SInt16 inID, ConstStr255Param inName)
{
    return Add(inValue, inType, inID, inName);
}

OSStatus AddFloat32Preference(float inValue, OSType inType, SInt16 inID, ConstStr255Param inName)
{
    return Add(inValue, inType, inID, inName);
}

OSStatus AddCStringPreference(const char* inValue, OSType inType, SInt16 inID, ConstStr255Param inName)
{
    const size_t size = inValue ? std::strlen(inValue) + 1 : 1;
    return AddPreferenceData(inValue, static_cast<SInt32>(size), inType, inID, inName);
}

OSStatus AddBooleanPreference(Boolean inValue, OSType inType, SInt16 inID, ConstStr255Param inName)
{
    return Add(inValue, inType, inID, inName);
}

OSStatus AddBooleanNamedPreference(Boolean inValue, OSType inType, ConstStr255Param inName)
{
    return AddNamedPreferenceData(&inValue, sizeof inValue, inType, inName);
}

UInt32 GetUInt32Preference(OSType inType, SInt16 inID, UInt32 inDefault)
{
    return FetchValue(inType, inID, inDefault);
}

SInt32 GetSInt32Preference(OSType inType, SInt16 inID, SInt32 inDefault)
{
    return FetchValue(inType, inID, inDefault);
}

SInt16 GetSInt16Preference(OSType inType, SInt16 inID, SInt16 inDefault)
{
    return FetchValue(inType, inID, inDefault);
}

RGBColor GetRGBColorPreference(OSType inType, SInt16 inID, RGBColor inDefault)
{
    return FetchValue(inType, inID, inDefault);
}

Rect GetRectPreference(OSType inType, SInt16 inID, const Rect* inDefault)
{
    return FetchValue(inType, inID, inDefault ? *inDefault : Rect{});
}

void GetPStringPreference(OSType inType, SInt16 inID, StringPtr outValue, ConstStr255Param inDefault)
{
    const Handle entry = FetchEntry(inType, inID);
    // The whole entry, but no more than any Pascal string has: a file may hold anything.
    const Size size = std::min<Size>(entry ? GetHandleSize(entry) : 0, sizeof(Str255));
    CopyEntry(entry, { outValue, static_cast<SInt32>(size), inDefault, inDefault ? inDefault[0] + 1 : 0 },
              IsPString(entry));
}

void GetFSSpecPreference(OSType inType, SInt16 inID, FSSpec* outValue, const FSSpec* inDefault)
{
    GetPreferenceData(inType, inID, outValue, sizeof *outValue, inDefault, inDefault ? sizeof *inDefault : 0);
}

double GetFloat64Preference(OSType inType, SInt16 inID, double inDefault)
{
    return FetchValue(inType, inID, inDefault);
}

float GetFloat32Preference(OSType inType, SInt16 inID, float inDefault)
{
    return FetchValue(inType, inID, inDefault);
}

void GetCStringPreference(OSType inType, SInt16 inID, char* outValue, const char* inDefault)
{
    const Handle entry = FetchEntry(inType, inID);
    const Size size = entry ? GetHandleSize(entry) : 0;
    const bool isComplete = IsCString(entry);
    const SInt32 defaultSize = inDefault ? static_cast<SInt32>(std::strlen(inDefault) + 1) : 0;
    CopyEntry(entry, { outValue, kWholeEntry, inDefault, defaultSize }, isComplete);
    if (entry && !isComplete && outValue && size >= defaultSize)
        outValue[size] = 0;
}

Boolean GetBooleanPreference(OSType inType, SInt16 inID, Boolean inDefault)
{
    return FetchValue(inType, inID, inDefault);
}

Boolean GetBooleanNamedPreference(OSType inType, ConstStr255Param inName, Boolean inDefault)
{
    Boolean value = inDefault;
    GetNamedPreferenceData(inType, inName, &value, sizeof value, &inDefault, sizeof inDefault);
    return value;
}
