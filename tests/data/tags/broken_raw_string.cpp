int a;
auto s = R"x( open )y";
int b;
