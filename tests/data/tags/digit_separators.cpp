int a = 1'000;
int b = 0x1'FF'AA;
char c = 'x';
char d = u8'y';
double e = 1.5'5;
int f;
