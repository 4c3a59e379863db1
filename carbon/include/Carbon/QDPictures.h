// Pictures: drawing that is recorded and played back in any frame. Begin with OpenCPicture and DrawPicture.
// Quickdraw.h includes this.
#ifndef LAMPBLACK_CARBON_QDPICTURES_H
#define LAMPBLACK_CARBON_QDPICTURES_H

#include <Carbon/MacTypes.h>

// Picture
//
// What a picture begins with; the opcodes follow. All of a picture is big-endian, as it is in files and in
// resources, these fields too: QDGetPictureBounds answers the frame as numbers.
struct Picture {
    short picSize; // the low 16 bits of the size; nothing relies on it
    Rect picFrame;
};
typedef struct Picture Picture;
typedef Picture* PicPtr;
typedef PicPtr* PicHandle;

struct OpenCPicParams {
    Rect srcRect;
    Fixed hRes; // pixels an inch: 0x00480000 is 72
    Fixed vRes;
    short version; // -2
    short reserved1;
    SInt32 reserved2;
};
typedef struct OpenCPicParams OpenCPicParams;

static_assert(sizeof(Picture) == 10 && sizeof(OpenCPicParams) == 24, "the published sizes");

LAMPBLACK_BEGIN_C

// OpenPicture / OpenCPicture
//
// Begin to record what is drawn in the current port; the pen is hidden meanwhile, and what is drawn after a
// ShowPen shows as well. Both record in version 2; OpenCPicture says its resolution in an extended header. A
// wide-open clip region is recorded as the frame, since it could not be scaled.
//
// Ownership:  the caller's once ClosePicture was called; release it with KillPicture.
// Errors:     NULL without a current port, with a picture open in it already, or (QDError memFullErr) without
//             memory.
// Source:     IM-QD, documented; the clip region is ours.
PicHandle OpenPicture(const Rect* picFrame);
PicHandle OpenCPicture(const OpenCPicParams* newHeader);

// ClosePicture
//
// Ends the recording and shows the pen again. Where memory was short the picture has an empty frame, and
// QDError answers memFullErr.
void ClosePicture(void);

// For pictures that were recorded; those of a resource file go with ReleaseResource.
void KillPicture(PicHandle myPicture);

// Adds a comment to the open picture. dataHandle may be NULL when dataSize is 0.
void PicComment(short kind, short dataSize, Handle dataHandle);

// DrawPicture
//
// Plays a picture of version 1 or 2 in the current port, its frame mapped to dstRect; what reaches beyond
// dstRect is drawn, too. The port's state is afterwards what it was.
//
// Errors:     QDError: paramErr for what is no picture; pictureDataErr for one whose data end early or make
//             no sense, after what could be read has been drawn; noMemForPictPlaybackErr without memory.
// Source:     IM-QD, documented; pictureDataErr is ours.
void DrawPicture(PicHandle myPicture, const Rect* dstRect);

// A 'PICT' resource; NULL when there is none.
PicHandle GetPicture(short pictureID);

// The frame in native numbers; empty for what is no picture.
Rect* QDGetPictureBounds(PicHandle picH, Rect* outRect);

// Whether a picture is open in a port.
Boolean IsPortPictureBeingDefined(CGrafPtr port);

// PackBits / UnpackBits
//
// The run-length coding of pictures: a count byte n, 0 to 127: n + 1 bytes follow as they are; -1 to -127:
// one byte stands for 1 - n; -128 stands for nothing. Both move the pointers to behind what they read and
// wrote. Packing takes at most (srcBytes + 126) / 127 bytes more than it reads. Unpacking stops when dstBytes
// are written, within a run if need be, and trusts the source to hold that much.
void PackBits(Ptr* srcPtr, Ptr* dstPtr, short srcBytes);
void UnpackBits(Ptr* srcPtr, Ptr* dstPtr, short dstBytes);

LAMPBLACK_END_C

#endif
