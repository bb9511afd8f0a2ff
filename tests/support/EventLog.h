#pragma once

#include <deque>
#include <functional>
#include <string>

#include "Handlers.h"

namespace test {

// Writes down which events fire, in order, each as "NAME:VALUE " with the value the event tells.
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
  void Listen(const std::string& name, mavro::NotifyEvent& event,
              std::function<void(mavro::NotifyArgs&)> also = {}) {
    listeners.emplace_back(name, *this, std::move(also));
    event.Add_H(&listeners.back(), &Listener::On);
  }

  // What has been written since the last time.
  std::string Take() { return std::exchange(lines, {}); }

 private:
  struct Listener : mavro::object {
    Listener(const std::string& itsName, EventLog& its,
             std::function<void(mavro::NotifyArgs&)> more)
        : name(itsName), log(its), also(std::move(more)) {}
    void On(mavro::NotifyArgs& args) {
      log.lines += name + ":" + std::to_string(args.value) + " ";
      if (also) also(args);
    }

    std::string name;
    EventLog& log;
    std::function<void(mavro::NotifyArgs&)> also;
  };

  std::deque<Listener> listeners;
  std::string lines;
};

}  // namespace test
