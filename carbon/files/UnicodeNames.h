// Names in Unicode, as FSRef calls give and take them. Begin at LookUpUnicode.
#ifndef LAMPBLACK_FILES_UNICODENAMES_H
#define LAMPBLACK_FILES_UNICODENAMES_H

#include "Catalog.h"

namespace lampblack::files {

// A name in full: no length of 31 and no Mac Roman here. What is no UTF-8 on the host is U+FFFD.
HFSUniStr255 UnicodeNameOf(const Item&);

// The name that a new file gets for it. Errors: errFSMissingName, errFSNameTooLong, bdNamErr, as
// FSMakeFSRefUnicode.
OSErr HostNameOfUnicode(UniCharCount inLength, const UniChar* inName, std::string* outHostName);

// What has the name in a folder: the host's own bytes, else the first of those listed whose name is
// canonically equivalent, else the first that differs in capitals only. On fnfErr the item is filled in and
// does not exist. Errors: also those of HostNameOfUnicode.
OSErr LookUpUnicode(Folder inFolder, UniCharCount inLength, const UniChar* inName, Item* outItem);

} // namespace lampblack::files

#endif
