#include "search/TabTexts.h"

#include <algorithm>
#include <cstdint>

#include "TextCodec.h"
#include "base/DiskStamp.h"
#include "editor/ApplyEdits.h"
#include "editor/EditTabs.h"

namespace zendry {

namespace {

mavro::TextEncoding EncodingOf(const CppEditor& editor) {
  return static_cast<mavro::TextEncoding>(editor.encoding);
}

}  // namespace

TabTexts::TabTexts(EditTabs& itsTabs) : tabs(itsTabs) {
  for (int i = 0; i < tabs.TabCount(); ++i) {
    const std::string& name = tabs.GetTab(i)->editor->fileName;
    const DiskStamp stamp = name.empty() ? DiskStamp() : ReadDiskStamp(name);
    if (stamp.exists) names[{stamp.device, stamp.inode}] = name;
  }
}

// Two names can lead to one file.
CppEditor* TabTexts::EditorOf(const std::string& path) const {
  const auto named = [this](const std::string& name) -> CppEditor* {
    for (int i = 0; i < tabs.TabCount(); ++i)
      if (tabs.GetTab(i)->editor->fileName == name) return tabs.GetTab(i)->editor.get();
    return nullptr;
  };
  if (tabs.TabCount() == 0) return nullptr;
  if (CppEditor* editor = named(path)) return editor;
  if (names.empty()) return nullptr;
  const DiskStamp stamp = ReadDiskStamp(path);
  const auto found = names.find({stamp.device, stamp.inode});
  return stamp.exists && found != names.end() ? named(found->second) : nullptr;
}

OpenText* TabTexts::At(const std::string& path) {
  CppEditor* editor = EditorOf(path);
  if (!editor) return nullptr;
  return &current.emplace(*editor);
}

std::string TabTexts::TabText::WhyFixed() const {
  return editor.IsReadOnly() ? "its text is read only" : "";
}

std::string TabTexts::TabText::Whole() const {
  return editor.GetText();
}

std::string TabTexts::TabText::Shown() const {
  return editor.GetRange(0, editor.Length());
}

std::optional<std::string> TabTexts::TabText::Bytes() const {
  return mavro::EncodeText(editor.GetText(), EncodingOf(editor), editor.OddByte());
}

void TabTexts::TabText::Apply(const std::vector<TextEdit>& edits) {
  ApplyTextEdits(editor, edits);
}

// Only the part that differs is replaced, so that marks and folds of the rest stay.
void TabTexts::TabText::TakeBytes(std::string_view bytes) {
  std::string text;
  if (EncodingOf(editor) == mavro::cByteLetters) {
    text = mavro::TextOfByteLetters(bytes);
  } else {
    mavro::TextDecoder decoder(EncodingOf(editor));
    text = decoder.Decode(bytes);
    text += decoder.Finish();
  }
  const std::string before = Shown();
  const auto front = std::mismatch(before.begin(), before.end(), text.begin(), text.end());
  const auto start = static_cast<size_t>(front.first - before.begin());
  const auto back = std::mismatch(before.rbegin(), before.rend() - static_cast<ptrdiff_t>(start),
                                  text.rbegin(), text.rend() - static_cast<ptrdiff_t>(start));
  const auto same = static_cast<size_t>(back.first - before.rbegin());
  Apply({{start, before.size() - same - start, text.substr(start, text.size() - same - start)}});
}

}  // namespace zendry
