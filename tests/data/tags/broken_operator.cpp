struct A {
  operator;
  operator();
  operator
};
int operator