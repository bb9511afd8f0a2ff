struct certificate {
  STACK_OF(X509) *certs;
  STACK_OF(X509) plain, rest;
  ElfW(Addr) address;
  static constexpr PREPEND(half) epsilon() { return 1; }
  CALL(x) certificate(int);
  SLOT(d_func(), void x(int))
  int *handle() const;
  int last;
};
STACK_OF(X509) *get_certs(int count);
PUBLIC(const char *) get_name(const struct certificate *of);
template <class T>
RESULT_OF(T, void(int)) sent(const T& t, MOVE(T) moved DEFAULT(int)) {}
void fill OF((int a));
CALL(x) FUNCTION(y);
int after;
