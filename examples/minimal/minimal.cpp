// The smallest whole application: a window and its controls from resources; OK, Return and the close box
// quit.
#include <lampblack/lampblack.h>

class MainWindow : public CWindow {
public:
    MainWindow()
        : CWindow(128, kDocumentWindowClass, kWindowStandardHandlerAttribute | kWindowCloseBoxAttribute)
    {
    }
    OSStatus DoControlHit(EventRef) override { return Quit(); }
    OSStatus DoWindowClose(EventRef) const override { return Quit(); }

private:
    static OSStatus Quit()
    {
        QuitApplicationEventLoop();
        return noErr;
    }
};

int main()
{
    InitializeMacOSHelpers();
    MainWindow window;
    window.StandardSetup();
    window.Show();
    RunApplicationEventLoop();
    return ExitMacOSHelpers();
}
