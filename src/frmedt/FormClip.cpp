#include "frmedt/FormClip.h"

#include <algorithm>
#include <map>

#include "frmedt/CtrlReg.h"
#include "frmedt/FormLocator.h"
#include "frmedt/FormTokens.h"
#include "frmedt/FormWriter.h"

namespace zendry {

namespace {

using Copies = std::map<const CtrlRec*, CtrlRec*>;

void CopyData(const CtrlRec& from, CtrlRec& to) {
  to.className = from.className;
  to.declClass = from.declClass;
  to.classDef = from.classDef;
  to.hasAdd = from.hasAdd;
  to.props = from.props;
  to.events = from.events;
  to.kept = from.kept;
}

// True if a record or one that it is in is among `records`.
bool IsAmong(const CtrlRec* rec, const std::vector<CtrlRec*>& records) {
  for (size_t depth = 0; rec && depth < records.size() + 1000; ++depth, rec = rec->parent)
    if (std::find(records.begin(), records.end(), rec) != records.end()) return true;
  return false;
}

// Copies a record of a known class into another model, into the copy of its parent if that has one.
CtrlRec* CopyRecord(const CtrlRec& from, FormData& to, CtrlRec& target, Copies& copies,
                    const std::string& name) {
  if (!from.classDef) return nullptr;
  const auto parent = copies.find(from.parent);
  CtrlRec& made =
      to.AddControl(*from.classDef, parent == copies.end() ? target : *parent->second, name);
  CopyData(from, made);
  made.hasAdd = true;
  copies[&from] = &made;
  return &made;
}

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  for (size_t start = 0; start < text.size();) {
    const size_t end = std::min(text.find('\n', start), text.size() - 1) + 1;
    lines.push_back(text.substr(start, end - start));
    start = end;
  }
  return lines;
}

std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line;
  return text;
}

}  // namespace

std::string CopyText(const FormData& form, const std::vector<CtrlRec*>& records) {
  FormData clip;
  Copies copies;
  for (const CtrlRec* rec : form.controls) {
    if (rec == &form.root || !rec->classDef || !IsAmong(rec, records)) continue;
    const bool isRead = rec->name.size() >= cShortestName && !clip.Find(rec->name);
    CopyRecord(*rec, clip, clip.root, copies,
               isRead ? rec->name : clip.UniqueName(rec->classDef->name));
  }
  std::vector<std::string> decl, init;
  FormWriter writer(clip);
  writer.WriteDecl(decl);
  writer.WriteInit(init);
  return copies.empty() ? "" : Joined(decl) + Joined(init);
}

std::vector<CtrlRec*> PasteText(FormData& form, CtrlRec& target, const std::string& text) {
  std::vector<std::string> decl, init;
  std::vector<std::string>* open = nullptr;
  for (const std::string& line : LinesOf(text)) {
    const FormMarker marker = MarkerOf(line);
    if (marker == FormMarker::cDecl) open = &decl;
    if (marker == FormMarker::cInit) open = &init;
    if (marker == FormMarker::cEnd) open = nullptr;
    if (open) open->push_back(line.ends_with('\n') ? line : line + "\n");
  }
  FormData clip;
  if (!decl.empty()) clip.ReadDecl(decl);
  if (!init.empty()) clip.ReadInit(init);
  std::vector<CtrlRec*> pasted;
  Copies copies;
  for (const CtrlRec* rec : clip.controls) {
    if (rec == &clip.root || !rec->classDef) continue;
    const bool isFree = !form.Find(rec->name);
    const std::string name = isFree ? rec->name : form.UniqueName(rec->classDef->name);
    CtrlRec* made = CopyRecord(*rec, form, target, copies, name);
    if (made && made->parent == &target) pasted.push_back(made);
  }
  return pasted;
}

void CopyForm(const FormData& from, FormData& to) {
  CopyData(from.root, to.root);
  Copies copies;
  copies[&from.root] = &to.root;
  for (const CtrlRec* rec : from.controls)
    if (rec != &from.root && rec->parent) CopyRecord(*rec, to, to.root, copies, rec->name);
  // A parent may come after what is in it.
  for (const auto& [rec, copy] : copies)
    if (const auto parent = copies.find(rec->parent); parent != copies.end())
      copy->parent = parent->second;
}

}  // namespace zendry
