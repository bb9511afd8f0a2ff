class
class {
class : {
class A : ,, B< { int x; };
}
}
int after;
