// The values in the preference file. An entry is one resource, known by type and ID or by type and name; its
// bytes are the value as this machine holds it. Begin at AddSInt32Preference and GetSInt32Preference.
//
// Every call opens the preference file around itself, unless OpenPreferenceFile holds it open; the current
// resource file is afterwards what it was before, and ResError is the call's result.
#ifndef LAMPBLACK_PREFS_PREFERENCES_H
#define LAMPBLACK_PREFS_PREFERENCES_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN_C

// AddPreferenceResource
//
// Stores a handle as an entry, in place of one with the same type and ID. inName may be null.
// Ownership:  on success the handle has been taken and released; on failure it is still the caller's, unless
//             only the writing failed.
// Errors:     paramErr  null handle; those of OpenPreferenceFile and AddResource. Those of WriteResource
//             (dskFulErr for instance): the file holds the old entry.
OSStatus AddPreferenceResource(Handle inData, OSType inType, SInt16 inID, ConstStr255Param inName);

// AddPreferenceData
//
// Stores a copy of inSize bytes. Kept: when no memory can be had for them the result is inSize, cut to 16
// bits.
// Errors:     paramErr  null data with a size; those of AddPreferenceResource.
OSStatus AddPreferenceData(const void* inData, SInt32 inSize, OSType inType, SInt16 inID,
                           ConstStr255Param inName);

// AddNamedPreferenceData
//
// Stores under a name: an entry of the type and name is replaced under its ID, a new one gets an ID by
// chance above 100.
OSStatus AddNamedPreferenceData(const void* inData, SInt32 inSize, OSType inType, ConstStr255Param inName);

// GetPreferenceResource, GetNamedPreferenceResource
//
// An entry's bytes in a handle that is the caller's; null when there is none, and ResError says why. outID
// may be null.
Handle GetPreferenceResource(OSType inType, SInt16 inID);
Handle GetNamedPreferenceResource(OSType inType, SInt16* outID, ConstStr255Param inName);

// GetPreferenceData, GetNamedPreferenceData
//
// Copies inSize bytes of an entry, or the whole entry when inSize is -1 whatever its size; the destination
// must hold the largest value that is ever stored. Without the entry inDefaultSize bytes of inDefault are
// copied (none: the destination is left alone). An entry of fewer bytes than inSize is laid over the
// default.
void GetPreferenceData(OSType inType, SInt16 inID, void* outData, SInt32 inSize, const void* inDefault,
                       SInt32 inDefaultSize);
void GetNamedPreferenceData(OSType inType, ConstStr255Param inName, void* outData, SInt32 inSize,
                            const void* inDefault, SInt32 inDefaultSize);

// RemovePreferenceResource
//
// Errors:     those of OpenPreferenceFile; noErr when there is no such entry and when it cannot be removed.
OSStatus RemovePreferenceResource(OSType inType, SInt16 inID);

// StoreWindowPosition, RestoreWindowPosition
//
// A window's place as entry 'wpos'. Restoring follows SetWindowPosition: without an entry, or with one that
// is cut off, the window is centred.
// Errors:     MemError for a null window; those of AddPreferenceResource and SetWindowPosition.
OSStatus StoreWindowPosition(WindowRef inWindow, SInt16 inID);
OSStatus RestoreWindowPosition(WindowRef inWindow, SInt16 inID);

// Typed writers. Errors: those of AddPreferenceData; paramErr for a null pointer.
OSStatus AddUInt32Preference(UInt32 inValue, OSType inType, SInt16 inID, ConstStr255Param inName);
OSStatus AddSInt32Preference(SInt32 inValue, OSType inType, SInt16 inID, ConstStr255Param inName);
OSStatus AddSInt16Preference(SInt16 inValue, OSType inType, SInt16 inID, ConstStr255Param inName);
OSStatus AddRGBColorPreference(RGBColor inValue, OSType inType, SInt16 inID, ConstStr255Param inName);
OSStatus AddRectPreference(const Rect* inValue, OSType inType, SInt16 inID, ConstStr255Param inName);
OSStatus AddPStringPreference(ConstStr255Param inValue, OSType inType, SInt16 inID, ConstStr255Param inName);
OSStatus AddFSSpecPreference(const FSSpec* inValue, OSType inType, SInt16 inID, ConstStr255Param inName);
OSStatus AddFloat64Preference(double inValue, OSType inType, SInt16 inID, ConstStr255Param inName);
OSStatus AddFloat32Preference(float inValue, OSType inType, SInt16 inID, ConstStr255Param inName);
OSStatus AddCStringPreference(const char* inValue, OSType inType, SInt16 inID, ConstStr255Param inName);
OSStatus AddBooleanPreference(Boolean inValue, OSType inType, SInt16 inID, ConstStr255Param inName);
OSStatus AddBooleanNamedPreference(Boolean inValue, OSType inType, ConstStr255Param inName);

// Typed readers: the value, or the default when there is no entry. A null default is a zero Rect, or leaves
// the destination alone. The strings are copied whole: the destination must hold the largest that is ever
// stored.
UInt32 GetUInt32Preference(OSType inType, SInt16 inID, UInt32 inDefault);
SInt32 GetSInt32Preference(OSType inType, SInt16 inID, SInt32 inDefault);
SInt16 GetSInt16Preference(OSType inType, SInt16 inID, SInt16 inDefault);
RGBColor GetRGBColorPreference(OSType inType, SInt16 inID, RGBColor inDefault);
Rect GetRectPreference(OSType inType, SInt16 inID, const Rect* inDefault);
void GetPStringPreference(OSType inType, SInt16 inID, StringPtr outValue, ConstStr255Param inDefault);
void GetFSSpecPreference(OSType inType, SInt16 inID, FSSpec* outValue, const FSSpec* inDefault);
double GetFloat64Preference(OSType inType, SInt16 inID, double inDefault);
float GetFloat32Preference(OSType inType, SInt16 inID, float inDefault);
void GetCStringPreference(OSType inType, SInt16 inID, char* outValue, const char* inDefault);
Boolean GetBooleanPreference(OSType inType, SInt16 inID, Boolean inDefault);
Boolean GetBooleanNamedPreference(OSType inType, ConstStr255Param inName, Boolean inDefault);

LAMPBLACK_END_C

#endif
