#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>

#include "search/OpenTexts.h"

namespace zendry {

class CppEditor;
class EditTabs;

// The open tabs as searches in files see them. Lives as long as one search.
class TabTexts : public OpenTexts {
 public:
  explicit TabTexts(EditTabs& itsTabs);

  // The answer is valid until the next call.
  OpenText* At(const std::string& path) override;

 private:
  class TabText : public OpenText {
   public:
    explicit TabText(CppEditor& itsEditor) : editor(itsEditor) {}
    std::string WhyFixed() const override;
    std::string Whole() const override;
    std::string Shown() const override;
    std::optional<std::string> Bytes() const override;
    void Apply(const std::vector<TextEdit>& edits) override;
    void TakeBytes(std::string_view bytes) override;

   private:
    CppEditor& editor;
  };
  CppEditor* EditorOf(const std::string& path) const;

  EditTabs& tabs;
  std::map<std::pair<uint64_t, uint64_t>, std::string> names;  // of open files, by device and inode
  std::optional<TabText> current;
};

}  // namespace zendry
