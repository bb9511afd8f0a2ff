#pragma once

#include <type_traits>

#include "Object.h"

namespace mavro {

// The argument of most events. It is on the sender's stack while the event fires.
struct NotifyArgs {
  object* sender = nullptr;  // the control or object that fires; not owned
  int value = 0;             // set by the event; a handler may change it for the sender to read
};

namespace detail {

// One event that is being fired. These objects form a chain. Through it, an event that one of its
// own handlers destroys notifies the loop that fires it; the event itself needs no data for this.
class Firing {
 public:
  explicit Firing(const void* event);
  ~Firing();
  Firing(const Firing&) = delete;
  Firing& operator=(const Firing&) = delete;

  bool EventIsGone() const { return event == nullptr; }

  // Notifies every loop that fires `event` that the event and its nodes no longer exist.
  static void EventDestroyed(const void* event);

 private:
  const void* event;
  Firing* outer;
};

// The handlers of one event: each is a target and the member function to call.
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

  // Calls `call` with each target and its method. Returns false if one of them destroyed the list.
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

// Gives a handler in any other class this one compiler error and no others.
template <class Class>
constexpr void CheckMayHandle() {
  static_assert(cMayHandle<Class>,
                "A class that has handlers derives from mavro::object, as every form and control "
                "does: class MyClass : public object");
}

}  // namespace detail

// A list of handlers, each a target and one of its member functions, called in the order in which
// they were added. Handlers can't be removed: they are added in constructors and destroyed with the
// event. An event without handlers is one null pointer, and firing it costs one comparison.
//
// A handler may destroy the event that called it (close its form, delete its control); the
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

  // Calls every handler with `args`. Returns false if a handler destroyed the event; the caller
  // must then not touch the event or its owner.
  bool Fire(Args& args) {
    return handlers.ForEach([&](object& target, Method method) { (target.*method)(args); });
  }

 private:
  using Method = void (object::*)(Args&);
  detail::HandlerList<Method> handlers;
};

using NotifyEvent = Event<NotifyArgs>;

}  // namespace mavro
