#define PAIR(a, b) { a, b }
enum { kFirst = 3, kSecond };
type 'Test' (1:9) {
    Size: integer = $$CountOf(items); hex string[$$Word(Size) * 2];
    array items { Body: pstring; byte = $$Offset(Body) & 255; longint = $$BitField(Body, 0, 8); };
    array places { byte = $$Offset(Body[$$ArrayIndex(places)]); point; };
    optional { wstring; align long; } ; End:
};
resource 'Test' (kFirst, "n", purgeable) { $"", { "a" }, { PAIR(1, 2) }, "w" };
data 'abcd' (kSecond, $$Name) { $$Format("%d-%s", kFirst, "x") };
duplicate data 'abcd' (4) { }; change 'abcd' (4) to 'efgh' (5, "q"); delete 'efgh';
resource 'DITL' (1) { { {1,2,3,4}, Button { enabled, "abc" } } } patch { 19, $"77" };
