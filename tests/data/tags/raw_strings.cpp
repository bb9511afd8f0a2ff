const char* a = R"(};" { int no;)";
const char* b = u8R"x(
)" } 
)x";
const char* c = LR"()";
int FOOR = "x";
int d;
