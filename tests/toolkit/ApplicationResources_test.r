// 1.2.3 final, and small values of each kind.
data 'vers' (1) { $"01 23 80 00 0000 05" "1.2.3" $"05" "1.2.3" };
data 'STR ' (128, "Greeting") { $"05" "Hello" };
resource 'STR#' (128) { { "one"; "two"; "" } };
data 'BOOL' (128) { $"02" };
data 'BOOL' (129) { $"00" };
data 'CTL#' (129) { $"0102 0304 05" };
