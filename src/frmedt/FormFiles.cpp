#include "frmedt/FormFiles.h"

#include <algorithm>
#include <map>
#include <optional>

#include "FileText.h"
#include "frmedt/FormKeep.h"
#include "frmedt/FormWriter.h"
#include "project/Counterpart.h"
#include "project/Project.h"

namespace zendry {

namespace {

FormTextPtr CompanionOf(const std::string& path, bool) {
  static const Project cNoProject;
  const std::string other = FindCounterpart(path, cNoProject);
  return other.empty() ? nullptr : FormFile::Read(other).text;
}

}  // namespace

FormFile FormFile::Read(const std::string& path) {
  FormFile file;
  mavro::FileText read = mavro::ReadFileText(path);
  file.error = read.error;
  if (read.Ok() && read.text.size() > cLargest)
    file.error = path + ": has more than 64 MB, it was not read";
  if (!file.error.empty()) return file;
  file.bytes = std::move(read.text);
  file.encoding = mavro::DetectEncoding(file.bytes);
  mavro::TextDecoder decoder(file.encoding);
  std::string text(decoder.Decode(file.bytes));
  text += decoder.Finish();
  file.oddByte = decoder.oddByte;
  file.text = std::make_shared<FormText>(path, std::move(text));
  return file;
}

std::string FormFile::Write(const std::string& newText) const {
  const std::string& path = text->Path();
  const auto encode = [this](const std::string& one) {
    return mavro::EncodeText(one, encoding, oddByte);
  };
  if (encode(text->Text()) != bytes) return path + ": its bytes can't be kept, it was not written";
  const std::optional<std::string> newBytes = encode(newText);
  if (!newBytes) return path + ": its encoding has no letter for the new text";
  return *newBytes == bytes ? std::string() : mavro::SaveFileText(path, *newBytes).error;
}

// Always false, for the caller to return.
bool FormFiles::TellOnce(const std::string& path, int line, const std::string& text) {
  const std::string all = path + ':' + std::to_string(line + 1) + ": " + text;
  if (told.insert(all).second) tell(all);
  return false;
}

bool FormFiles::TellReports(const std::vector<FormReport>& reports, const std::string& path) {
  for (const FormReport& report : reports)
    TellOnce(report.path.empty() ? path : report.path, std::max(report.line, 0), report.text);
  return reports.empty();
}

bool FormFiles::Select(FormLocator& locator, size_t number) {
  locator.reports.clear();
  if (locator.Select(number, CompanionOf)) return true;
  return TellReports(locator.reports, {});
}

bool FormFiles::CheckSelected(const FormTarget& target) {
  const FormCheckup found = CheckupOf(target);
  bool isClean = TellReports(found.reports, {});
  for (const FormLoss& loss : found.losses) isClean = TellOnce(loss.path, loss.line, loss.Words());
  return isClean;
}

bool FormFiles::Check(const std::string& path) {
  const FormFile file = FormFile::Read(path);
  if (!file.text) {
    tell(file.error);
    return false;
  }
  FormLocator locator;
  locator.Scan(file.text);
  bool isClean = TellReports(locator.reports, path);
  for (size_t i = 0; i < locator.targets.size(); ++i) {
    isClean &= Select(locator, i) && CheckSelected(locator.Selected());
  }
  return isClean;
}

// None if the form can't be opened, without what is kept.
std::vector<RegionEdit> FormFiles::EditsOf(const FormLocator& locator, Losses losses) {
  std::vector<std::string> declLines = locator.Selected().decl.Lines();
  std::vector<std::string> initLines = locator.Selected().init.Lines();
  KeptLines kept;
  if (losses == Losses::cKeep) kept = TakeKept(declLines, initLines);
  FormData form;
  form.ReadDecl(declLines);
  form.ReadInit(initLines);
  if (!form.CheckParents()) return {};
  FormWriter writer(form);
  std::vector<std::string> decl, init;
  writer.WriteDecl(decl);
  writer.WriteInit(init);
  AppendKept(decl, kept.decl);
  AppendKept(init, kept.init);
  return locator.ReplaceRegions(decl, init);
}

// The edits of a file are made from its end on, so that those above stay valid.
bool FormFiles::WriteEdits(std::vector<RegionEdit> edits) {
  std::sort(edits.begin(), edits.end(), [](const RegionEdit& left, const RegionEdit& right) {
    return left.edit.offset > right.edit.offset;
  });
  std::map<std::string, std::vector<TextEdit>> byFile;
  for (RegionEdit& one : edits) byFile[one.path].push_back(std::move(one.edit));
  bool isWritten = true;
  for (const auto& [path, changes] : byFile) {
    const FormFile file = FormFile::Read(path);
    std::string text = file.text ? file.text->Text() : std::string();
    for (const TextEdit& edit : changes)
      if (edit.offset + edit.length <= text.size())
        text.replace(edit.offset, edit.length, edit.text);
    const std::string error = file.text ? file.Write(text) : file.error;
    if (!error.empty()) tell(error);
    isWritten &= error.empty();
  }
  return isWritten;
}

bool FormFiles::Rewrite(const std::string& path, Losses losses) {
  const FormFile file = FormFile::Read(path);
  if (!file.text) {
    tell(file.error);
    return false;
  }
  FormLocator locator;
  locator.Scan(file.text);
  bool isDone = TellReports(locator.reports, path);
  std::vector<RegionEdit> edits;
  for (size_t i = 0; i < locator.targets.size(); ++i) {
    std::vector<RegionEdit> more;
    if (Select(locator, i)) {
      CheckSelected(locator.Selected());
      more = EditsOf(locator, losses);
    }
    isDone &= !more.empty();
    edits.insert(edits.end(), more.begin(), more.end());
  }
  return WriteEdits(std::move(edits)) && isDone;
}

}  // namespace zendry
