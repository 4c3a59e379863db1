// The resource IDs that the gallery's source and its gallery.r share.
#define kGalleryWindow 128
#define kAboutWindow 129
#define kSpriteWindow 130
#define kFontWindow 131
#define kPictureWindow 132

#define kBackdrop 128 // the 'JPEG'

#define kIntroText 1000
#define kBallGroup 1010
#define kMoveBox 1011
#define kTrailBox 1012
#define kLargeBox 1013
#define kColourGroup 1020
#define kRedButton 1021
#define kGreenButton 1022
#define kBlueButton 1023
#define kNameLabel 1030
#define kNameField 1031
#define kGreetButton 1032
#define kGreetingText 1033
#define kSpeedLabel 1040
#define kSpeedBar 1041
#define kSpeedText 1042
#define kProgressLabel 1050
#define kProgressBar 1051
#define kArrows 1052
#define kPlayground 1060
#define kAboutButton 1070
#define kBeepButton 1071
#define kOKButton 1072
#define kPagesLabel 1080
#define kSpritesButton 1081
#define kFontsButton 1082
#define kPictureButton 1083

#define kAboutTitle 1100
#define kAboutText 1101
#define kAboutOK 1102

#define kPathLabel 1200
#define kPathField 1201
#define kOpenButton 1202
#define kPictureText 1203
#define kPicturePane 1204
