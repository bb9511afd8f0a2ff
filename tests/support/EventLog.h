#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>

#include "Events.h"

namespace test {

// Writes down which events fire, in order, each as "NAME:VALUE " with the value of the event.
//
//   test::EventLog log;
//   log.Listen("change", edit.onChange);
//   ... type something ...
//   EXPECT_EQ(log.Take(), "change:0 change:0 ");
//
// Declare it before the controls that it listens to.
class EventLog {
 public:
  // `also` is called after the event has been written down; it may do anything.
  template <class Args>
  void Listen(const std::string& name, mavro::Event<Args>& event,
              std::type_identity_t<std::function<void(Args&)>> also = {}) {
    auto listener = std::make_unique<Listener<Args>>(name, *this, std::move(also));
    event.Add_H(listener.get(), &Listener<Args>::On);
    listeners.push_back(std::move(listener));
  }

  // The events since the last call.
  std::string Take() { return std::exchange(lines, {}); }

 private:
  template <class Args>
  struct Listener : mavro::object {
    Listener(const std::string& itsName, EventLog& its, std::function<void(Args&)> more)
        : name(itsName), log(its), also(std::move(more)) {}
    void On(Args& args) {
      log.lines += name + ":" + std::to_string(args.value) + " ";
      if (also) also(args);
    }

    std::string name;
    EventLog& log;
    std::function<void(Args&)> also;
  };

  std::deque<std::unique_ptr<mavro::object>> listeners;
  std::string lines;
};

}  // namespace test
