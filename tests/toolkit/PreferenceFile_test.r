// What AddStandardPreferenceFileResources copies: 1.2.3 final and 2.0 alpha 4.
data 'vers' (1) { $"01 23 80 00 0000 05" "1.2.3" $"05" "1.2.3" };
data 'vers' (2, "Named") { $"02 00 40 04 0000 03" "Two" $"03" "Two" };
data 'STR ' (-16397, "Other name") { $"06" "Cannot" };
data 'STR ' (-16396) { $"07" "Creator" };
