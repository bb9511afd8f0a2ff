enum E { A, , B = , C
int x;
