// A resource file and the dialogs that it holds.
#ifndef LAMPBLACK_VIEWER_DIALOGFILE_H
#define LAMPBLACK_VIEWER_DIALOGFILE_H

#include <Carbon/Carbon.h>

#include <filesystem>
#include <string>
#include <vector>

struct DialogEntry {
    SInt16 id = 0;
    std::string label; // "DLOG 128  Name", in Mac Roman
};

class DialogFile {
public:
    // Opens the file for reading, whatever form its resources have, and puts it on top of the chain.
    OSStatus Open(const std::filesystem::path&);

    // In the order of the file.
    const std::vector<DialogEntry>& Dialogs() const { return fDialogs; }

    // Makes the dialog with its item list, shows it with its content at the given place. Null when the Dialog
    // Manager cannot make it.
    DialogRef Show(size_t inIndex, Point inGlobal) const;

private:
    SInt16 fFile = -1;
    std::vector<DialogEntry> fDialogs;
};

#endif
