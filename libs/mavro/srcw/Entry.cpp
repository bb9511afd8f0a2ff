#include "Entry.h"

int main(int argc, char** argv) {
  return mavro::RunApplication(argc, argv);
}
