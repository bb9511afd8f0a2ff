#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "SystemDialogs.h"

namespace test {

// Stands in for message boxes and standard dialogs as long as it lives: records what was asked and
// answers from lists. An empty list answers as nobody would: Ok, else No, else `otherwise`; no
// file. One at a time.
//
//   test::ScriptedDialogs dialogs;
//   dialogs.answers = {mavro::Answer::cYes};
//   ... something that asks ...
//   EXPECT_EQ(dialogs.texts, std::vector<std::string>{"Confirmation: Save changes?"});
struct ScriptedDialogs {
  ScriptedDialogs() : saved(mavro::Dialogs()) {
    current = this;
    mavro::Dialogs() = {Message, ChooseFiles, ChooseFolder, Beep, ChooseColor};
  }
  ~ScriptedDialogs() {
    mavro::Dialogs() = saved;
    current = nullptr;
  }
  ScriptedDialogs(const ScriptedDialogs&) = delete;
  ScriptedDialogs& operator=(const ScriptedDialogs&) = delete;

  // The answers, first entry first; each is used once.
  std::deque<mavro::Answer> answers;
  mavro::Answer otherwise = mavro::Answer::cCancel;  // of a question that can be cancelled
  std::deque<std::vector<std::string>> files;
  std::deque<std::string> folders;
  std::deque<mavro::Color> colors;  // empty: cancelled

  // The questions: "TITLE: TEXT" of message boxes; the questions of file dialogs; the titles of
  // folder dialogs; how often it beeped.
  std::vector<std::string> texts;
  std::vector<int> flags;
  std::vector<mavro::FileQuestion> questions;
  std::vector<std::string> folderTitles;
  int beeps = 0;
  std::vector<mavro::Color> colorStarts;  // where colour dialogs started

  // Called while a message box is open.
  std::function<void()> onMessage;

 private:
  static mavro::Answer Message(const std::string& text, const std::string& title, int flags) {
    current->texts.push_back(title + ": " + text);
    current->flags.push_back(flags);
    if (current->onMessage) current->onMessage();
    const int buttons = flags & 0xF;
    if (buttons == mavro::cOkOnly) return Take(current->answers, mavro::Answer::cOk);
    const bool yesNo = buttons == mavro::cYesNo;
    return Take(current->answers, yesNo ? mavro::Answer::cNo : current->otherwise);
  }
  static std::vector<std::string> ChooseFiles(const mavro::FileQuestion& question) {
    current->questions.push_back(question);
    return Take(current->files, {});
  }
  static std::string ChooseFolder(const std::string& title, const std::string&) {
    current->folderTitles.push_back(title);
    return Take(current->folders, {});
  }
  static bool ChooseColor(const std::string&, mavro::Color& color) {
    current->colorStarts.push_back(color);
    if (current->colors.empty()) return false;
    color = Take(current->colors, color);
    return true;
  }
  static void Beep() { ++current->beeps; }

  template <class T>
  static T Take(std::deque<T>& list, T otherwise) {
    if (list.empty()) return otherwise;
    T first = std::move(list.front());
    list.pop_front();
    return first;
  }

  static inline ScriptedDialogs* current = nullptr;
  mavro::DialogTable saved;
};

}  // namespace test
