char a = '\''; char b = '"'; string c = "'";
string d = "one \\"; string e = "two \" three; {";
string f = @"c:\"; int g; // a backslash keeps it open "
int h; string i = "line one
  line two;
#if not a directive
"; int j;
it's open; { int k; }
"
