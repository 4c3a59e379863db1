// The icon or picture that a bevel button shows.
#ifndef LAMPBLACK_CONTROLS_BUTTONIMAGE_H
#define LAMPBLACK_CONTROLS_BUTTONIMAGE_H

#include <Carbon/ControlDefinitions.h>
#include <Carbon/Icons.h>

namespace lampblack::controls {

class ButtonImage {
public:
    ButtonImage() = default;
    ~ButtonImage();
    ButtonImage(const ButtonImage&) = delete;
    ButtonImage& operator=(const ButtonImage&) = delete;

    // Takes the resource that a kControlContent… type and an ID name; without one there is nothing to show.
    void Load(SInt16 inType, SInt16 inID);
    bool IsThere() const { return fType != kControlContentTextOnly; }
    // How wide and high it is, in a box that an icon with several sizes should suit.
    Point Size(const Rect& inBox) const;
    // In the current port; what is larger than its place is cut.
    void Draw(const Rect& inPlace, IconTransformType inTransform) const;

private:
    bool Take(SInt16 inType, SInt16 inID);

    SInt16 fType = kControlContentTextOnly;
    union {
        IconSuiteRef suite;
        CIconHandle colorIcon;
        Handle plainIcon;
        PicHandle picture;
    } fData = {};
};

} // namespace lampblack::controls

#endif
