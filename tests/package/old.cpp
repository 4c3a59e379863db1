// In the C++ of 2011, with words that later ones took away: the headers allow what sources of old are.
#include <Carbon/Carbon.h>
#include <QuickTime/QuickTime.h>

static long Sum(register const SInt16* inNumbers, register int inCount)
{
    register long sum = 0;
    while (--inCount >= 0)
        sum += *inNumbers++;
    return sum;
}

int main() throw()
{
    const SInt16 numbers[] = { 1, 2, 39 };
    Rect bounds;
    SetRect(&bounds, 0, 0, (short)Sum(numbers, 3), 10);
    long count = sizeof numbers;
    const OSErr error = FSRead(0, &count, &bounds); // a count of old
    return bounds.right == 42 && error != noErr ? 0 : 1;
}
