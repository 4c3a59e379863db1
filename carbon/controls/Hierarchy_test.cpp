#include "controls/TestSupport.h"

using namespace lampblack::test;

TEST_CASE("CreateRootControl: once a window, and never after other controls")
{
    TestWindow window;
    ControlRef again = nullptr;
    CHECK(CreateRootControl(window, &again) == errRootAlreadyExists);
    ControlRef root = nullptr;
    CHECK(GetRootControl(window, &root) == noErr);
    CHECK(root == window.Root());

    TestWindow flat(false);
    CHECK(GetRootControl(flat, &root) == errNoRootControl);
    CHECK(flat.Add(kControlPushButtonProc, { 10, 10, 30, 90 }) != nullptr);
    CHECK(CreateRootControl(flat, &root) == errControlsAlreadyExist);
    CHECK(CreateRootControl(nullptr, &root) == paramErr);
    CHECK(CreateRootControl(flat, nullptr) == paramErr);
}

TEST_CASE("NewControl: with a root the control is embedded in it")
{
    TestWindow window;
    const ControlRef button = window.Add(kControlPushButtonProc, { 10, 10, 30, 90 }, "Go");
    UInt16 count = 0;
    CHECK(CountSubControls(window.Root(), &count) == noErr);
    CHECK(count == 1);
    ControlRef parent = nullptr;
    CHECK(GetSuperControl(button, &parent) == noErr);
    CHECK(parent == window.Root());
    ControlRef first = nullptr;
    CHECK(GetIndexedSubControl(window.Root(), 1, &first) == noErr);
    CHECK(first == button);
    CHECK(GetIndexedSubControl(window.Root(), 2, &first) == paramErr);
    CHECK(CountSubControls(button, &count) == errControlIsNotEmbedder);
}

TEST_CASE("NewControl: an unknown definition ID, no bounds or no window make none")
{
    TestWindow window;
    const Rect bounds = { 10, 10, 30, 90 };
    CHECK(NewControl(window, &bounds, nullptr, true, 0, 0, 1, 9999, 0) == nullptr);
    CHECK(NewControl(window, nullptr, nullptr, true, 0, 0, 1, 368, 0) == nullptr);
    CHECK(NewControl(nullptr, &bounds, nullptr, true, 0, 0, 1, 368, 0) == nullptr);
    UInt16 count = 9;
    CountSubControls(window.Root(), &count);
    CHECK(count == 0);
}

TEST_CASE("EmbedControl: into a group; not into itself, its own child or what takes none")
{
    TestWindow window;
    const ControlRef group = window.Add(kControlGroupBoxTextTitleProc, { 10, 10, 150, 200 }, "Group");
    const ControlRef inner = window.Add(kControlGroupBoxTextTitleProc, { 20, 20, 100, 180 }, "Inner");
    const ControlRef button = window.Add(kControlPushButtonProc, { 40, 40, 60, 120 }, "Go");
    CHECK(EmbedControl(inner, group) == noErr);
    CHECK(EmbedControl(button, inner) == noErr);
    ControlRef parent = nullptr;
    GetSuperControl(button, &parent);
    CHECK(parent == inner);
    CHECK(EmbedControl(group, group) == errCantEmbedIntoSelf);
    CHECK(EmbedControl(group, inner) == errCantEmbedIntoSelf);
    const ControlRef other = window.Add(kControlPushButtonProc, { 200, 40, 220, 120 }, "Other");
    CHECK(EmbedControl(other, button) == errControlIsNotEmbedder);
    CHECK(EmbedControl(window.Root(), group) == errCantEmbedRoot);
    CHECK(EmbedControl(nullptr, group) == paramErr);
}

TEST_CASE("AutoEmbedControl: the innermost container that encloses the control takes it")
{
    TestWindow window;
    const ControlRef group = window.Add(kControlGroupBoxTextTitleProc, { 10, 10, 150, 200 }, "Group");
    const ControlRef inside = window.Add(kControlPushButtonProc, { 40, 40, 60, 120 }, "In");
    const ControlRef outside = window.Add(kControlPushButtonProc, { 40, 150, 60, 260 }, "Out");
    CHECK(AutoEmbedControl(inside, window) == noErr);
    CHECK(AutoEmbedControl(outside, window) == noErr);
    ControlRef parent = nullptr;
    GetSuperControl(inside, &parent);
    CHECK(parent == group);
    GetSuperControl(outside, &parent);
    CHECK(parent == window.Root());
}

TEST_CASE("DisposeControl: a container takes what it contains along, and old references are errors")
{
    TestWindow window;
    const ControlRef group = window.Add(kControlGroupBoxTextTitleProc, { 10, 10, 150, 200 }, "Group");
    const ControlRef button = window.Add(kControlPushButtonProc, { 40, 40, 60, 120 }, "Go");
    EmbedControl(button, group);
    DisposeControl(group);
    CHECK_FALSE(IsValidControlHandle(group));
    CHECK_FALSE(IsValidControlHandle(button));
    CHECK(EnableControl(button) == controlHandleInvalidErr);
    CHECK(EnableControl(nullptr) == paramErr);
    CHECK(GetControlValue(button) == 0);
    CHECK(GetControlOwner(button) == nullptr);
    CHECK(GetControlEventTarget(button) == nullptr);
    DisposeControl(button);
}

TEST_CASE("DisposeWindow: its controls go with it")
{
    ControlRef button = nullptr;
    {
        TestWindow window;
        button = window.Add(kControlPushButtonProc, { 40, 40, 60, 120 }, "Go");
    }
    CHECK_FALSE(IsValidControlHandle(button));
}

TEST_CASE("KillControls: the root goes too, so that a new one can be made")
{
    TestWindow window;
    window.Add(kControlPushButtonProc, { 40, 40, 60, 120 }, "Go");
    KillControls(window);
    ControlRef root = nullptr;
    CHECK(GetRootControl(window, &root) == errNoRootControl);
    CHECK(CreateRootControl(window, &root) == noErr);
}

TEST_CASE(
    "IsControlVisible, IsControlEnabled, IsControlActive: a container's state counts for what it contains")
{
    TestWindow window;
    const ControlRef group = window.Add(kControlGroupBoxTextTitleProc, { 10, 10, 150, 200 }, "Group");
    const ControlRef button = window.Add(kControlPushButtonProc, { 40, 40, 60, 120 }, "Go");
    EmbedControl(button, group);
    CHECK(IsControlVisible(button));
    HideControl(group);
    CHECK_FALSE(IsControlVisible(button));
    ShowControl(group);
    CHECK(IsControlVisible(button));
    DisableControl(group);
    CHECK_FALSE(IsControlEnabled(button));
    EnableControl(button); // latent until the group is enabled
    CHECK_FALSE(IsControlEnabled(button));
    EnableControl(group);
    CHECK(IsControlEnabled(button));
    DeactivateControl(window.Root());
    CHECK_FALSE(IsControlActive(button));
    ActivateControl(window.Root());
    CHECK(IsControlActive(button));
}

TEST_CASE("GetNewControl: every field of the template arrives")
{
    TestWindow window;
    TestResources file;
    file.Add('CNTL', 128,
             ControlTemplate({ 10, 20, 30, 140 }, 1, true, 7, -3, kControlCheckBoxProc, 0x12345678, "Sound"));
    file.Add('CNTL', 129,
             ControlTemplate({ 10, 20, 30, 140 }, 0, false, 1, 0, kControlPushButtonProc, 0, ""));
    file.Add('CNTL', 130, ControlTemplate({ 10, 20, 30, 140 }, 0, true, 1, 0, 16000, 0, "Custom"));
    Bytes cut;
    cut.Box({ 1, 2, 3, 4 }).Word(0).Word(0x0100);
    file.Add('CNTL', 131, cut);
    REQUIRE(file.Open());

    const ControlRef box = GetNewControl(128, window);
    REQUIRE(box);
    Rect bounds;
    GetControlBounds(box, &bounds);
    CHECK(bounds.top == 10);
    CHECK(bounds.left == 20);
    CHECK(bounds.bottom == 30);
    CHECK(bounds.right == 140);
    CHECK(GetControlValue(box) == 1);
    CHECK(GetControlMinimum(box) == -3);
    CHECK(GetControlMaximum(box) == 7);
    CHECK(GetControlReference(box) == 0x12345678);
    CHECK(TitleOf(box) == "Sound");
    CHECK(IsControlVisible(box));

    CHECK_FALSE(IsControlVisible(GetNewControl(129, window)));
    CHECK(GetNewControl(130, window) == nullptr);
    CHECK(GetNewControl(131, window) == nullptr);
    CHECK(GetNewControl(999, window) == nullptr);
    CHECK(GetNewControl(128, nullptr) == nullptr);
}

TEST_CASE("DumpControlHierarchy: a text file with a line for each control")
{
    TestWindow window;
    window.Add(kControlPushButtonProc, { 40, 40, 60, 120 }, "Go ahead");
    FSRef folder;
    const auto path = std::filesystem::temp_directory_path();
    REQUIRE(FSPathMakeRef((const UInt8*)path.c_str(), &folder, nullptr) == noErr);
    FSSpec spec;
    REQUIRE(FSGetCatalogInfo(&folder, 0, nullptr, nullptr, &spec, nullptr) == noErr);
    FSSpec file;
    FSCatalogInfo info;
    REQUIRE(FSGetCatalogInfo(&folder, 0x10, &info, nullptr, nullptr, nullptr) == noErr); // its node ID
    FSMakeFSSpec(spec.vRefNum, (SInt32)info.nodeID, Pascal(" controls").data(), &file);
    CHECK(DumpControlHierarchy(window, &file) == noErr);
    std::ifstream in(path / " controls");
    const Str text((std::istreambuf_iterator<char>(in)), {});
    CHECK(text.find("'push'") != Str::npos);
    CHECK(text.find("Go ahead") != Str::npos);
    std::filesystem::remove(path / " controls");
    CHECK(DumpControlHierarchy(nullptr, &file) == paramErr);
    CHECK(DumpControlHierarchy(window, nullptr) == paramErr);
}
