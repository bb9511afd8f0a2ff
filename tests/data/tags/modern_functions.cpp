struct A {
  A() noexcept;
  void f() const noexcept(true) override;
  void g() final;
  A(const A&) = delete;
  A& operator=(A&&) = default;
  [[nodiscard]] constexpr int h() const { return 1; }
  auto k(int a) -> std::vector<int>;
  auto l() const -> decltype(x.y()) { return 1; }
  explicit(true) A(int);
  void m(std::function<void(int)> f = [](int i) { return; });
  int after;
};
