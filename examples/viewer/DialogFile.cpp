#include "DialogFile.h"

namespace {

DialogEntry EntryOf(Handle inResource)
{
    SInt16 id = 0;
    ResType type = 0;
    Str255 name = "";
    GetResInfo(inResource, &id, &type, name);
    std::string label = "DLOG " + std::to_string(id);
    if (name[0])
        label += "  " + std::string((const char*)name + 1, name[0]);
    return { id, label };
}

std::vector<DialogEntry> DialogsOfCurrentFile()
{
    std::vector<DialogEntry> dialogs;
    SetResLoad(false);
    for (SInt16 i = 1; i <= Count1Resources('DLOG'); ++i)
        if (const Handle resource = Get1IndResource('DLOG', i))
            dialogs.push_back(EntryOf(resource));
    SetResLoad(true);
    return dialogs;
}

} // namespace

OSStatus DialogFile::Open(const std::filesystem::path& inPath)
{
    FSRef ref;
    if (const OSStatus status = FSPathMakeRef((const UInt8*)inPath.c_str(), &ref, nullptr))
        return status;
    fFile = FSOpenResFile(&ref, fsRdPerm);
    if (fFile == -1)
        return ResError();
    UseResFile(fFile);
    fDialogs = DialogsOfCurrentFile();
    return noErr;
}

DialogRef DialogFile::Show(size_t inIndex, Point inGlobal) const
{
    if (inIndex >= fDialogs.size())
        return nullptr;
    UseResFile(fFile);
    const DialogRef dialog = GetNewDialog(fDialogs[inIndex].id, nullptr, (WindowRef)-1L); // in front of all
    if (!dialog)
        return nullptr;
    const WindowRef window = GetDialogWindow(dialog);
    ChangeWindowAttributes(window, kWindowStandardHandlerAttribute, kWindowNoAttributes);
    SetWindowModality(window, kWindowModalityNone, nullptr); // it must not keep clicks from the viewer's own
    MoveWindow(window, inGlobal.h, inGlobal.v, true);
    ShowWindow(window);
    return dialog;
}
