// Helpers over the File Manager.
#include "prefs/FileHelpers.h"

OSStatus ResolveFileID(SInt16 inVRefNum, SInt16 inRefNum, FSSpec* outSpec)
{
    Str255 name = {};
    FCBPBRec block = {};
    block.ioNamePtr = name;
    block.ioRefNum = inRefNum;
    block.ioFCBIndx = 0;
    const OSErr err = PBGetFCBInfoSync(&block);
    if (err != noErr)
        return err;
    return FSMakeFSSpec(inVRefNum, block.ioFCBParID, name, outSpec);
}
