#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "TextCodec.h"
#include "search/OpenTexts.h"
#include "search/ReplaceJournal.h"

namespace test {

// Open editors without windows.
class TextsInMemory : public zendry::OpenTexts {
 public:
  struct Text : zendry::OpenText {
    std::string WhyFixed() const override { return whyFixed; }
    std::string Whole() const override { return text; }
    std::string Shown() const override { return text; }
    std::optional<std::string> Bytes() const override { return mavro::EncodeText(text, encoding); }
    void Apply(const std::vector<zendry::TextEdit>& edits) override {
      ++steps;
      for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit)
        text.replace(edit->offset, edit->length, edit->text);
    }
    void TakeBytes(std::string_view bytes) override {
      ++steps;
      mavro::TextDecoder decoder(encoding);
      text = decoder.Decode(bytes);
    }
    std::string text, whyFixed;
    mavro::TextEncoding encoding = mavro::cPlainText;
    int steps = 0;
  };

  zendry::OpenText* At(const std::string& path) override {
    const auto found = texts.find(path);
    return found == texts.end() ? nullptr : &found->second;
  }

  std::map<std::string, Text> texts;
};

// Journals without a disk; `left` are those of an ended program.
struct JournalsInMemory : zendry::JournalStore {
  mavro::FileResult Keep(int id, const std::string& journal) override {
    if (!whyNot.empty()) return {whyNot};
    journals[id] = journal;
    return {};
  }
  std::string Read(int id) override { return journals[id]; }
  void Drop(int id) override { journals.erase(id); }
  std::vector<int> Left() override { return left; }

  std::map<int, std::string> journals;
  std::vector<int> left;
  std::string whyNot;
};

}  // namespace test
