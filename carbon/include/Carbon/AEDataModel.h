// Descriptors: data with a type code, lists and records of them, and coercions from one type to another. The
// type codes are those of event parameters too. Begin at AECreateDesc; every descriptor that a call fills in
// is the caller's, to be released with AEDisposeDesc.
//
// A descriptor whose dataHandle is NULL is one without data. Everywhere below, errAENotAEDesc is the answer
// to one that was disposed of or was never made here, errAEWrongDataType to data where a list or record is
// wanted, and paramErr to a null pointer. A result is a null descriptor ({ typeNull, NULL }) after an error.
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
    typeText = typeChar,
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
    typeInteger = typeSInt32,
    typeMagnitude = typeUInt32,
    typeComp = typeSInt64,
    typeShortFloat = typeIEEE32BitFloatingPoint,
    typeLongFloat = typeIEEE64BitFloatingPoint,
    typeFloat = typeIEEE64BitFloatingPoint,
    typeUnicodeText = 'utxt', // UTF-16 of the machine's byte order
    typeUTF8Text = 'utf8',
    typeType = 'type', // a four-character code, as are the next three
    typeEnumerated = 'enum',
    typeKeyword = 'keyw',
    typeProperty = 'prop',
    typeApplSignature = 'sign',
    typeTrue = 'true', // these three have no data
    typeFalse = 'fals',
    typeNull = 'null',
    typeAEList = 'list',
    typeAERecord = 'reco',
    typeFSS = 'fss ',     // an FSSpec
    typeFSRef = 'fsrf',   // an FSRef
    typeAlias = 'alis',   // an AliasRecord
    typeFileURL = 'furl', // a URL of the scheme "file", percent-encoded UTF-8
    typeProcessSerialNumber = 'psn ',
    typePtr = 'ptr ',
    typeWildCard = '****'
};

typedef struct OpaqueAEDataStorageType* AEDataStorageType;
typedef AEDataStorageType* AEDataStorage;

// The type is the caller's to change, for instance to that of a record which stands for an object.
struct AEDesc {
    DescType descriptorType;
    AEDataStorage dataHandle; // never followed by callers
};
typedef struct AEDesc AEDesc;
typedef AEDesc* AEDescPtr;
typedef AEDesc AEDescList;
typedef AEDescList AERecord;
typedef AERecord AppleEvent;

// A coercion: makes a descriptor of type toType out of another (DescProc) or of bytes (PtrProc). One that
// cannot answers errAECoercionFail, and the next that may is asked.
typedef OSErr (*AECoerceDescProcPtr)(const AEDesc* fromDesc, DescType toType, long handlerRefcon,
                                     AEDesc* toDesc);
typedef OSErr (*AECoercePtrProcPtr)(DescType typeCode, const void* dataPtr, Size dataSize, DescType toType,
                                    long handlerRefcon, AEDesc* result);
typedef AECoerceDescProcPtr AECoerceDescUPP;
typedef AECoercePtrProcPtr AECoercePtrUPP;
typedef AECoerceDescUPP AECoercionHandlerUPP; // either kind, cast to this

LAMPBLACK_BEGIN_C

AECoerceDescUPP NewAECoerceDescUPP(AECoerceDescProcPtr userRoutine);
void DisposeAECoerceDescUPP(AECoerceDescUPP userUPP);
OSErr InvokeAECoerceDescUPP(const AEDesc* fromDesc, DescType toType, long handlerRefcon, AEDesc* toDesc,
                            AECoerceDescUPP userUPP);
AECoercePtrUPP NewAECoercePtrUPP(AECoercePtrProcPtr userRoutine);
void DisposeAECoercePtrUPP(AECoercePtrUPP userUPP);
OSErr InvokeAECoercePtrUPP(DescType typeCode, const void* dataPtr, Size dataSize, DescType toType,
                           long handlerRefcon, AEDesc* result, AECoercePtrUPP userUPP);

// --- Descriptors

// Makes a null descriptor of anything, without looking at it first.
void AEInitializeDesc(AEDesc* desc);

// AECreateDesc
//
// A descriptor with a copy of the bytes. dataPtr may be NULL when dataSize is 0.
// Errors:     paramErr  a negative size; memFullErr.
OSErr AECreateDesc(DescType typeCode, const void* dataPtr, Size dataSize, AEDesc* result);

// Releases the data and makes a null descriptor.
OSErr AEDisposeDesc(AEDesc* theAEDesc);

OSErr AEDuplicateDesc(const AEDesc* theAEDesc, AEDesc* result);

// AEGetDescData, AEGetDescDataSize
//
// Copies at most maximumSize bytes; the size of what is no data (a list, a record) is 0.
OSErr AEGetDescData(const AEDesc* theAEDesc, void* dataPtr, Size maximumSize);
Size AEGetDescDataSize(const AEDesc* theAEDesc);

// Gives a descriptor, which must be one, another type and other data.
OSErr AEReplaceDescData(DescType typeCode, const void* dataPtr, Size dataSize, AEDesc* theAEDesc);

// --- Coercions

// AECoerceDesc, AECoercePtr
//
// A new descriptor of the type wanted; a copy when the data have it already or typeWildCard is wanted.
// Installed handlers are asked first. Provided are: integers, reals and Booleans of any kind among
// themselves and from and to text; texts among themselves; four-character codes and text; Booleans and the
// enumerators 'true' and 'fals'; typeFSS, typeFSRef, typeAlias and typeFileURL among themselves; anything to
// a list of one item, such a list to its item's type, and a record to a list or to a record of another type.
//
// Errors:     errAECoercionFail  no way, bytes that are not of their type, or a number that does not fit;
//             those of the File and Alias Managers when a file is not there.
OSErr AECoerceDesc(const AEDesc* theAEDesc, DescType toType, AEDesc* result);
OSErr AECoercePtr(DescType typeCode, const void* dataPtr, Size dataSize, DescType toType, AEDesc* result);

// AEInstallCoercionHandler, AERemoveCoercionHandler, AEGetCoercionHandler
//
// Handlers of this application, or with isSysHandler those behind them; both kinds live as long as the
// process. typeWildCard as either type stands for any; a handler for the exact types is asked before. A
// handler with fromTypeIsDesc is called with descriptors. Removing with NULL removes whichever it is.
//
// Errors:     errAEHandlerNotFound.
OSErr AEInstallCoercionHandler(DescType fromType, DescType toType, AECoercionHandlerUPP handler,
                               long handlerRefcon, Boolean fromTypeIsDesc, Boolean isSysHandler);
OSErr AERemoveCoercionHandler(DescType fromType, DescType toType, AECoercionHandlerUPP handler,
                              Boolean isSysHandler);
OSErr AEGetCoercionHandler(DescType fromType, DescType toType, AECoercionHandlerUPP* handler,
                           long* handlerRefcon, Boolean* fromTypeIsDesc, Boolean isSysHandler);

// --- Lists and records
//
// Items count from 1. What is put is copied. Reading coerces to the type desired (typeWildCard: as it is),
// copies at most maximumSize bytes and answers the whole size in *actualSize; the results theAEKeyword,
// typeCode and actualSize may be NULL. The keyword of a list's item is typeWildCard.

// The bytes that all items have in common are stored with each of them here, so that factoringPtr and
// factoredSize change nothing; factoringPtr may be NULL.
OSErr AECreateList(const void* factoringPtr, Size factoredSize, Boolean isRecord, AEDescList* resultList);

// Whether the data are a record, whatever the type says.
Boolean AECheckIsRecord(const AEDesc* theDesc);

OSErr AECountItems(const AEDescList* theAEDescList, long* theCount);

// AEPutPtr, AEPutDesc
//
// Replace the item at an index of a list; 0 and the count plus 1 append.
// Errors:     errAEIllegalIndex  any other index; errAEWrongDataType  a record;
//             errAEBadListItem  lists in lists deeper than 256.
OSErr AEPutPtr(AEDescList* theAEDescList, long index, DescType typeCode, const void* dataPtr, Size dataSize);
OSErr AEPutDesc(AEDescList* theAEDescList, long index, const AEDesc* theAEDesc);

// Errors of reading and deleting: errAEDescNotFound  no such item; errAECoercionFail; errAEWrongDataType
// also for the bytes of an item that is a list or record itself.
OSErr AEGetNthPtr(const AEDescList* theAEDescList, long index, DescType desiredType, AEKeyword* theAEKeyword,
                  DescType* typeCode, void* dataPtr, Size maximumSize, Size* actualSize);
OSErr AEGetNthDesc(const AEDescList* theAEDescList, long index, DescType desiredType, AEKeyword* theAEKeyword,
                   AEDesc* result);
OSErr AESizeOfNthItem(const AEDescList* theAEDescList, long index, DescType* typeCode, Size* dataSize);
OSErr AEDeleteItem(AEDescList* theAEDescList, long index);

// The items of a record by their keywords; putting replaces the item of that keyword. The two families do the
// same.
OSErr AEPutKeyPtr(AERecord* theAERecord, AEKeyword theAEKeyword, DescType typeCode, const void* dataPtr,
                  Size dataSize);
OSErr AEPutKeyDesc(AERecord* theAERecord, AEKeyword theAEKeyword, const AEDesc* theAEDesc);
OSErr AEGetKeyPtr(const AERecord* theAERecord, AEKeyword theAEKeyword, DescType desiredType,
                  DescType* actualType, void* dataPtr, Size maximumSize, Size* actualSize);
OSErr AEGetKeyDesc(const AERecord* theAERecord, AEKeyword theAEKeyword, DescType desiredType, AEDesc* result);
OSErr AESizeOfKeyDesc(const AERecord* theAERecord, AEKeyword theAEKeyword, DescType* typeCode,
                      Size* dataSize);
OSErr AEDeleteKeyDesc(AERecord* theAERecord, AEKeyword theAEKeyword);

OSErr AEPutParamPtr(AppleEvent* theAppleEvent, AEKeyword theAEKeyword, DescType typeCode, const void* dataPtr,
                    Size dataSize);
OSErr AEPutParamDesc(AppleEvent* theAppleEvent, AEKeyword theAEKeyword, const AEDesc* theAEDesc);
OSErr AEGetParamPtr(const AppleEvent* theAppleEvent, AEKeyword theAEKeyword, DescType desiredType,
                    DescType* actualType, void* dataPtr, Size maximumSize, Size* actualSize);
OSErr AEGetParamDesc(const AppleEvent* theAppleEvent, AEKeyword theAEKeyword, DescType desiredType,
                     AEDesc* result);
OSErr AESizeOfParam(const AppleEvent* theAppleEvent, AEKeyword theAEKeyword, DescType* typeCode,
                    Size* dataSize);
OSErr AEDeleteParam(AppleEvent* theAppleEvent, AEKeyword theAEKeyword);

LAMPBLACK_END_C

#endif
