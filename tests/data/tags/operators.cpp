struct A {
  void* operator new(size_t);
  void operator delete[](void*);
  int operator ()(int);
  bool operator==(const A&) const;
  A& operator = (const A&);
  operator bool() const;
  operator const  char * ();
  A operator->();
  int operator[](int);
};
bool operator<(const A& a, const A& b);
A::operator int() { return 1; }
