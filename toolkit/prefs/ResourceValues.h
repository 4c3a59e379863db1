// Small values kept in resources, and texts with the application's version. The plain forms search the whole
// chain, the "1" forms the current file, the "Application" forms the application's file.
//
// Every call leaves noErr or the reason in ResError, resNotFound when the resource is missing.
#ifndef LAMPBLACK_PREFS_RESOURCEVALUES_H
#define LAMPBLACK_PREFS_RESOURCEVALUES_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// GetApplicationCString
//
// A string of the application's 'STR#' list; outText holds up to 256 bytes. Answers whether it has any text.
Boolean GetApplicationCString(SInt16 inListID, SInt16 inIndex, char* outText);

// GetNumVersion, Get1NumVersion, GetApplicationNumVersion (of 'vers' 1)
//
// The number at the head of a 'vers' resource.
// Errors:     resNotFound  missing or shorter than that, *outVersion is left alone; paramErr  null.
OSStatus GetNumVersion(SInt16 inID, NumVersion* outVersion);
OSStatus Get1NumVersion(SInt16 inID, NumVersion* outVersion);
OSStatus GetApplicationNumVersion(NumVersion* outVersion);

// 'BOOL': byte 0. 'RECT': top, left, bottom, right, and 'RGB ': red, green, blue, 16 bits each, in the byte
// order in which the Resource Manager delivers them. What is missing, wholly or at the end, is false or
// zero.
Boolean GetBoolean(SInt16 inID);
Boolean Get1Boolean(SInt16 inID);
Rect GetRect(SInt16 inID);
Rect Get1Rect(SInt16 inID);
Rect GetNamedRect(ConstStr255Param inName);
RGBColor GetRGBColor(SInt16 inID);
RGBColor Get1RGBColor(SInt16 inID);

// GetStringByID, GetStringByName
//
// A 'STR ' resource of the chain; empty when there is none. Answers whether there was one.
// Errors:     GetStringByID leaves paramErr in ResError for a missing string, GetStringByName resNotFound.
Boolean GetStringByID(StringPtr outText, SInt16 inID);
Boolean GetStringByName(StringPtr outText, ConstStr255Param inName);

// ConcatVersion, ConcatApplicationVersion
//
// Append the short version string of a 'vers' resource. Without one a Pascal string gets "<unknown>"
// appended, but a C string is replaced by it: kept, since about boxes rely on either. ioText holds up to 256
// bytes.
// Errors:     resNotFound; paramErr for null.
OSStatus ConcatVersion(SInt16 inID, StringPtr ioText);
OSStatus ConcatVersion(SInt16 inID, char* ioText);
OSStatus ConcatApplicationVersion(SInt16 inID, char* ioText);
OSStatus ConcatApplicationVersion(SInt16 inID, StringPtr ioText);

LAMPBLACK_END

#endif
