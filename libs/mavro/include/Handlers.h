#pragma once

#include <type_traits>

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

// The handlers of one event: targets, and which member of each is to be called.
template <class Method>
class HandlerList {
 public:
  HandlerList() = default;
  HandlerList(const HandlerList&) = delete;
  HandlerList& operator=(const HandlerList&) = delete;
  ~HandlerList() {
    if (head) Firing::EventDestroyed(this);
    while (head) {
      Node* next = head->next;
      delete head;
      head = next;
    }
  }

  bool IsEmpty() const { return head == nullptr; }

  void Append(object* target, const Method& method) {
    Node** tail = &head;
    while (*tail) tail = &(*tail)->next;
    *tail = new Node{target, method, nullptr};
  }

  // Calls `call` with each target and its method. Returns false if the list was destroyed by one of
  // them.
  template <class Call>
  bool ForEach(const Call& call) const {
    if (!head) return true;
    Firing firing(this);
    for (Node* node = head; node; node = node->next) {
      call(*node->target, node->method);
      if (firing.EventIsGone()) return false;
    }
    return true;
  }

 private:
  struct Node {
    object* target;
    Method method;
    Node* next;
  };

  Node* head = nullptr;
};

template <class Class>
constexpr bool cMayHandle = std::is_base_of_v<object, Class>;

// What a compiler says to a handler in any other class, and nothing else.
template <class Class>
constexpr void CheckMayHandle() {
  static_assert(cMayHandle<Class>,
                "A class that has handlers derives from mavro::object, as every form and control "
                "does: class MyClass : public object");
}

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
  // Appends a handler. `target` is not owned and must outlive the event.
  template <class Target, class Class>
  void Add_H(Target* target, void (Class::*method)(Args&)) {
    detail::CheckMayHandle<Class>();
    if constexpr (detail::cMayHandle<Class>)
      handlers.Append(static_cast<Class*>(target), static_cast<Method>(method));
  }

  bool HasHandlers() const { return !handlers.IsEmpty(); }

  // Calls every handler with `args`. Returns false if the event was destroyed meanwhile; the caller
  // must then touch neither the event nor its owner.
  bool Fire(Args& args) {
    return handlers.ForEach([&](object& target, Method method) { (target.*method)(args); });
  }

 private:
  using Method = void (object::*)(Args&);
  detail::HandlerList<Method> handlers;
};

using NotifyEvent = Event<NotifyArgs>;

}  // namespace mavro
