// The viewer's own window: which dialog of the file is shown, and the way to the others.
#ifndef LAMPBLACK_VIEWER_VIEWERWINDOW_H
#define LAMPBLACK_VIEWER_VIEWERWINDOW_H

#include "DialogFile.h"

#include <lampblack/lampblack.h>

class ViewerWindow : public CWindow {
public:
    // Made before the file is opened: its resources would otherwise stand before the viewer's own.
    ViewerWindow();
    ~ViewerWindow() override;

    void ShowFile(const std::filesystem::path& inPath, const DialogFile& inFile);

    OSStatus DoControlHit(EventRef inEvent) override;
    OSStatus DoWindowClose(EventRef inEvent) const override;

protected:
    void SetupWindowPosition() const override;

private:
    void Go(long inIndex);
    void FillList();
    void Describe();
    static OSStatus HandleKey(EventHandlerCallRef, EventRef, void* inViewer);

    const DialogFile* fFile = nullptr;
    long fIndex = 0;
    DialogRef fDialog = nullptr;
};

#endif
