// Strings, one of them damaged, and a version: 1.2.3 beta 45.

data 'STR ' (128) { $"05 48 65 6C 6C 6F" };
data 'STR ' (129) { $"0A 48 69" };     // says ten characters, holds two
data 'STR ' (130) { };
data 'STR ' (131) { $"05 41 00 42 43 44" };
data 'vers' (1) { $"01 23 60 45 00 00 05 31 2E 32 2E 33 00" };
