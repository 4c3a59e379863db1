// This process as the Process Manager tells of it.
#include <Carbon/MacErrors.h>
#include <Carbon/Processes.h>

#include <doctest/doctest.h>
#include <lampblack/host.h>

#include <cstdio>
#include <cstring>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

namespace {

const ProcessSerialNumber kNone = { 0, kNoProcess };
const ProcessSerialNumber kMe = { 0, kCurrentProcess };
const ProcessSerialNumber kStranger = { 0, 4711 };

} // namespace

TEST_CASE("GetCurrentProcess: a number of its own, which is the same as kCurrentProcess")
{
    ProcessSerialNumber number = kNone;
    Boolean same = false;
    CHECK(GetCurrentProcess(&number) == noErr);
    CHECK(number.lowLongOfPSN > kCurrentProcess);
    CHECK(SameProcess(&number, &kMe, &same) == noErr);
    CHECK(same);
    CHECK(SameProcess(&number, &kStranger, &same) == noErr);
    CHECK_FALSE(same);
    CHECK(GetCurrentProcess(nullptr) == paramErr);
    CHECK(SameProcess(&number, nullptr, &same) == paramErr);
}

TEST_CASE("GetNextProcess: one process, then procNotFound")
{
    ProcessSerialNumber number = kNone, own;
    GetCurrentProcess(&own);
    CHECK(GetNextProcess(&number) == noErr);
    CHECK(number.lowLongOfPSN == own.lowLongOfPSN);
    CHECK(GetNextProcess(&number) == procNotFound);
    CHECK(number.lowLongOfPSN == kNoProcess);
    number = kStranger;
    CHECK(GetNextProcess(&number) == paramErr);
    CHECK(GetNextProcess(nullptr) == paramErr);
}

TEST_CASE("GetProcessInformation: name, file, type and times of this process")
{
    Str31 name;
    FSSpec file;
    ProcessInfoRec info = {};
    info.processInfoLength = sizeof(info);
    info.processName = name;
    info.processAppSpec = &file;
    REQUIRE(GetProcessInformation(&kMe, &info) == noErr);
    CHECK(std::string(reinterpret_cast<char*>(name) + 1, name[0]) == "process_test");
    CHECK(memcmp(file.name, name, name[0] + 1) == 0);
    CHECK(info.processType == 'APPL');
    CHECK(info.processSize > 100000);
    CHECK(info.processLauncher.lowLongOfPSN == kNoProcess);
    FInfo finder;
    CHECK(FSpGetFInfo(&file, &finder) == noErr);
}

TEST_CASE(
    "GetProcessInformation: null name and file are left out, and the short record's length is understood")
{
    ProcessInfoRec info = {};
    info.processInfoLength = 60;
    CHECK(GetProcessInformation(&kMe, &info) == noErr);
    CHECK(info.processType == 'APPL');
    info.processInfoLength = 59;
    CHECK(GetProcessInformation(&kMe, &info) == paramErr);
    info.processInfoLength = sizeof(info);
    CHECK(GetProcessInformation(&kStranger, &info) == procNotFound);
    CHECK(GetProcessInformation(nullptr, &info) == paramErr);
    CHECK(GetProcessInformation(&kMe, nullptr) == paramErr);
}

TEST_CASE("GetFrontProcess: this process until the user turns to another, and again after SetFrontProcess")
{
    ProcessSerialNumber number;
    CHECK(GetFrontProcess(&number) == noErr);
    lampblack::host::SwitchProgram(false);
    lampblack::host::RunFor(0.1);
    CHECK(GetFrontProcess(&number) == procNotFound);
    CHECK(number.lowLongOfPSN == kNoProcess);
    CHECK(SetFrontProcess(&kMe) == noErr);
    lampblack::host::RunFor(0.1);
    CHECK(GetFrontProcess(&number) == noErr);
    CHECK(SetFrontProcess(&kStranger) == procNotFound);
    CHECK(SetFrontProcess(nullptr) == paramErr);
}

TEST_CASE("GetProcessForPID: this process only")
{
    ProcessSerialNumber number;
    pid_t pid = 0;
    CHECK(GetProcessForPID(getpid(), &number) == noErr);
    CHECK(GetProcessPID(&number, &pid) == noErr);
    CHECK(pid == getpid());
    CHECK(GetProcessForPID(1, &number) == procNotFound);
    CHECK(GetProcessPID(&kStranger, &pid) == procNotFound);
}

TEST_CASE("ExitToShell: ends the process with status 0")
{
    fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        alarm(10);
        ExitToShell();
    }
    int status = -1;
    REQUIRE(waitpid(child, &status, 0) == child);
    CHECK(WIFEXITED(status));
    CHECK(WEXITSTATUS(status) == 0);
}
