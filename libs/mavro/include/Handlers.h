#pragma once

#include "Object.h"

namespace mavro {

// Argument record of most events. Lives on the sender's stack while the event fires.
struct NotifyArgs {
  object* sender = nullptr;  // the control or object that fires; not owned
  int value = 0;             // what the event tells; a handler may change it for the sender to read
};

namespace detail {

// One event being fired. The chain of them lets an event that is destroyed by one of its own
// handlers tell the loop that fires it, without a byte in the event itself.
class Firing {
 public:
  explicit Firing(const void* event);
  ~Firing();
  Firing(const Firing&) = delete;
  Firing& operator=(const Firing&) = delete;

  bool EventIsGone() const { return event == nullptr; }

  // Tells every loop firing `event` that the event and its nodes no longer exist.
  static void EventDestroyed(const void* event);

 private:
  const void* event;
  Firing* outer;
};

}  // namespace detail

// A list of handlers, each a target and one of its members, called in the order they were added.
// There is no removal: handlers are added in constructors and go with the event. An event without
// handlers is one null pointer, and firing it costs one comparison.
//
// A handler may destroy the event it was called from (close its form, delete its control): the
// remaining handlers are then not called.
template <class Args>
class Event {
 public:
  Event() = default;
  Event(const Event&) = delete;
  Event& operator=(const Event&) = delete;
  ~Event() {
    if (head) detail::Firing::EventDestroyed(this);
    while (head) {
      Node* next = head->next;
      delete head;
      head = next;
    }
  }

  // Appends a handler. `target` is not owned and must outlive the event.
  template <class Target, class Class>
  void Add_H(Target* target, void (Class::*method)(Args&)) {
    Node** tail = &head;
    while (*tail) tail = &(*tail)->next;
    *tail = new Node{static_cast<Class*>(target), static_cast<void (object::*)(Args&)>(method),
                     nullptr};
  }

  bool HasHandlers() const { return head != nullptr; }

  // Calls every handler with `args`. Returns false if the event was destroyed meanwhile; the caller
  // must then touch neither the event nor its owner.
  bool Fire(Args& args) {
    if (!head) return true;
    detail::Firing firing(this);
    for (Node* node = head; node; node = node->next) {
      (node->target->*node->method)(args);
      if (firing.EventIsGone()) return false;
    }
    return true;
  }

 private:
  struct Node {
    object* target;
    void (object::*method)(Args&);
    Node* next;
  };

  Node* head = nullptr;
};

using NotifyEvent = Event<NotifyArgs>;

}  // namespace mavro
