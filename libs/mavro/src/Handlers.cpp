#include "Handlers.h"

namespace mavro::detail {

namespace {

Firing* innermost = nullptr;

}  // namespace

Firing::Firing(const void* fired) : event(fired), outer(innermost) {
  innermost = this;
}

Firing::~Firing() {
  innermost = outer;
}

void Firing::EventDestroyed(const void* event) {
  for (Firing* firing = innermost; firing; firing = firing->outer)
    if (firing->event == event) firing->event = nullptr;
}

}  // namespace mavro::detail
