// The type codes of data that travels in events and descriptors.
#ifndef LAMPBLACK_CARBON_AEDATAMODEL_H
#define LAMPBLACK_CARBON_AEDATAMODEL_H

#include <Carbon/MacErrors.h>
#include <Carbon/MacTypes.h>

typedef ResType DescType;
typedef FourCharCode AEKeyword;
typedef FourCharCode AEEventClass;
typedef FourCharCode AEEventID;

enum {
    typeBoolean = 'bool',
    typeChar = 'TEXT', // Mac Roman text
    typeSInt16 = 'shor',
    typeUInt16 = 'ushr',
    typeSInt32 = 'long',
    typeUInt32 = 'magn',
    typeSInt64 = 'comp',
    typeUInt64 = 'ucom',
    typeIEEE32BitFloatingPoint = 'sing',
    typeIEEE64BitFloatingPoint = 'doub',
    typeShortInteger = typeSInt16,
    typeLongInteger = typeSInt32,
    typeMagnitude = typeUInt32,
    typeShortFloat = typeIEEE32BitFloatingPoint,
    typeLongFloat = typeIEEE64BitFloatingPoint,
    typeFloat = typeIEEE64BitFloatingPoint,
    typeUnicodeText = 'utxt', // UTF-16 of the machine's byte order
    typeUTF8Text = 'utf8',
    typeType = 'type',
    typeEnumerated = 'enum',
    typeTrue = 'true',
    typeFalse = 'fals',
    typeNull = 'null',
    typeFSS = 'fss ',
    typeFSRef = 'fsrf',
    typeAlias = 'alis',
    typeProcessSerialNumber = 'psn ',
    typePtr = 'ptr ',
    typeWildCard = '****'
};

#endif
