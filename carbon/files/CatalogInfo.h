// The answers of FSGetCatalogInfo, for the calls that give them one at a time or many. Begin at
// FillCatalogInfo.
#ifndef LAMPBLACK_FILES_CATALOGINFO_H
#define LAMPBLACK_FILES_CATALOGINFO_H

#include "Catalog.h"

namespace lampblack::files {

// The fields asked for. Errors: fnfErr.
OSErr FillCatalogInfo(FSCatalogInfoBitmap inWhich, const Item&, FSCatalogInfo* outInfo);

} // namespace lampblack::files

#endif
