int f(
#ifdef A
  int a)
{
#else
  char b)
{
#endif
  return 1;
}
int after;
