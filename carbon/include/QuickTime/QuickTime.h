// What applications of this platform include for importers and exporters of images. All else that had this
// name, movies above all, is not here.
#ifndef LAMPBLACK_QUICKTIME_QUICKTIME_H
#define LAMPBLACK_QUICKTIME_QUICKTIME_H

#include <Carbon/Carbon.h>
#include <Carbon/Components.h>
#include <Carbon/ImageCompression.h>

#endif
