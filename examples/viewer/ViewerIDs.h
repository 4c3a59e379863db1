// The resource IDs of the viewer, high up where few files that it shows have theirs.
#define kViewerWindow 31000
#define kFileText 31001
#define kDialogText 31002
#define kDialogList 31003
#define kPreviousButton 31004
#define kNextButton 31005
#define kQuitButton 31006
