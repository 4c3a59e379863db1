#include "controls/ItemView.h"

#include "controls/Kind.h"

namespace lampblack::controls {

namespace {

class ItemView final : public Kind {
public:
    ItemView(Control& inControl, ItemViewDrawProc inDraw) : Kind(inControl), fDraw(inDraw) {}
    OSType Code() const override { return kControlKindUserPane; }
    void Draw(ControlPartCode) override { fDraw(fControl.Ref()); }
    bool IsSurface() const override { return true; }
    bool TakesMouse() const override { return false; }

private:
    ItemViewDrawProc fDraw;
};

} // namespace

ControlRef NewItemView(WindowRef inWindow, const Rect& inBounds, ItemViewDrawProc inDraw)
{
    NewControlInfo info;
    info.window = inWindow;
    info.bounds = inBounds;
    info.visible = false;
    info.procID = kControlUserPaneProc;
    Control* control = MakeControl(info);
    if (!control)
        return nullptr;
    control->kind = std::make_unique<ItemView>(*control, inDraw);
    return control->Ref();
}

} // namespace lampblack::controls
