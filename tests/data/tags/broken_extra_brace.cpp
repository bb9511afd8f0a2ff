int a;
}
int b;
