#include <Carbon/Carbon.h>

#include <doctest/doctest.h>

TEST_CASE("OpenPicture: without a current port there is no picture")
{
    SetPort(nullptr);
    const Rect frame = { 0, 0, 10, 10 };
    CHECK(OpenPicture(&frame) == nullptr);
    CHECK(OpenPicture(nullptr) == nullptr);
    CHECK(OpenCPicture(nullptr) == nullptr);
}
