int a;
)
int b;
