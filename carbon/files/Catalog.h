// The directory tree as the File Manager sees it: volumes, directory and file IDs, and what a name in a
// directory means on the host. Begin at Resolve.
//
// An ID is given to each folder and file when it is first met and stays its own while the process lives. The
// root of every volume has the ID fsRtDirID, so that a folder is a volume and an ID.
#ifndef LAMPBLACK_FILES_CATALOG_H
#define LAMPBLACK_FILES_CATALOG_H

#include "FileIdentity.h"

#include <Carbon/Files.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace lampblack::files {

struct Folder {
    SInt16 volume = 0;
    SInt32 id = 0;
    bool operator==(const Folder&) const = default;
};

// What a name means: a place in a folder, where something may be or not.
struct Item {
    Folder parent;        // id fsRtParID: the item is the volume itself
    std::string hostName; // as the host has it; empty for a volume
    std::string macName;  // Mac Roman, at most 31 bytes
    bool exists = false;
    bool isFolder = false;  // a folder itself, not a link to one
    bool isLink = false;    // a symbolic link, which counts as an alias file
    FileIdentity seen = {}; // when it was looked at, without times; of a link itself
};

struct Volume {
    SInt16 refNum;
    std::string name;           // Mac Roman, at most 27 bytes
    std::filesystem::path path; // absolute
};

// The volumes; the first, -1, is the host's whole file system. Every folder of the host may become another.
const std::vector<Volume>& Volumes();
SInt16 AddVolume(std::string_view inMacName, const std::filesystem::path&);

// A volume by reference number, by drive number (1 is the first), or the default one (0); null: none.
const Volume* FindVolume(SInt16 inRefNum);
const Volume* FindVolumeNamed(std::string_view inMacName);

// The volume that a name and a number mean together, as in parameter blocks: the one that a full path begins
// with, or whose name it is, else the number. Null: there is none.
const Volume* VolumeOfName(ConstStr255Param inName, SInt16 inRefNum);

// Resolve
//
// What FSMakeFSSpec's arguments mean. On fnfErr the item is filled in and does not exist. Errors: as
// FSMakeFSSpec.
OSErr Resolve(SInt16 inVolume, SInt32 inDirectory, ConstStr255Param inName, Item* outItem);
OSErr Resolve(const FSSpec&, Item* outItem);

// The folder that a volume and directory ID mean, with the rules for 0. Errors: nsvErr, dirNFErr.
OSErr ResolveFolder(SInt16 inVolume, SInt32 inDirectory, Folder* outFolder);

// The folder that they mean, which need not be there. Errors: nsvErr.
OSErr FolderMeant(SInt16 inVolume, SInt32 inDirectory, Folder* outFolder);

// Whether an ID was given to a folder, and not to a link to one: then whatever is found by a path through it
// shows that it is there.
bool IsFolderID(Folder);

// Fills in what an item is from what the host has in its place. Answers whether it exists.
bool LookAtHost(Item* ioItem);

// The item of a host's name in a folder. False, and the item is filled in all the same, when nothing has it.
bool ItemNamed(Folder, std::string_view inHostName, Item* outItem);

// The item at a host path, which must exist. False when it does not, or lies on no volume.
bool ItemAtPath(const std::filesystem::path&, Item* outItem);

// The same, but a link at the path's end is not followed.
bool ItemAtPathItself(const std::filesystem::path&, Item* outItem);

// The item with an ID of its volume. False when the ID was never given or the item is gone.
bool ItemWithID(Folder inNode, Item* outItem);

// The ID of an item, given now if it has none; fsRtDirID for a volume.
Folder NodeOf(const Item&);

// Who renames, moves or deletes an item through this process says so: then its ID, and the IDs of all in it,
// go with it, or are never given again. inNew is the item as it is found afterwards.
void NodeDidMove(const Item& inOld, const Item& inNew);
void NodeDidGo(const Item&);

// The ID that the next new item gets.
SInt32 NextNodeID();

// The item that a link leads to, all links on the way and at its end followed; the item itself when it is
// none. False when there is no such item, or a link leads in a circle.
bool FollowLinks(const Item&, Item* outItem);

// One step of that: what the link itself names, which may be a link again.
bool FollowOneLink(const Item&, Item* outItem);

// A place on the host. Of a folder that is gone, or an ID that was never given, a path where nothing can be.
std::filesystem::path PathOf(const Item&);
std::filesystem::path PathOf(Folder);
std::string PathTextOf(const Item&); // the same

// An FSSpec of an item. Names longer than fits are never made.
void MakeSpec(const Item&, FSSpec* outSpec);

Folder DefaultFolder();
void SetDefaultFolder(Folder);

// A name as the Macintosh shows it: exact when Mac Roman has its letters and it is at most 31 bytes long,
// else a short form that ends in '#', eight digits made from the whole name, and what follows its last dot.
std::string MacNameOf(std::string_view inHostName, bool* outIsShort = nullptr);
// The name that a new file of that Macintosh name gets.
std::string HostNameOf(std::string_view inMacName);

// Whether a file or folder of the host only holds parts of others, and so is not listed: "._name",
// "__MACOSX",
// ".AppleDouble".
bool IsPartName(std::string_view inHostName);

// The names in a host folder that are listed, in the order of PBGetCatInfo.
std::vector<std::string> NamesIn(const std::filesystem::path&);

} // namespace lampblack::files

#endif
