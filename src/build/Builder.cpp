#include "build/Builder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "CommandLine.h"
#include "FilePath.h"
#include "SystemDialogs.h"
#include "base/DiskStamp.h"
#include "base/Paths.h"
#include "base/Shell.h"
#include "build/ToolEnvironment.h"
#include "config/IdeConfig.h"
#include "project/Project.h"

namespace zendry {

namespace {

const Staleness cForced = {true, "everything is rebuilt"};
constexpr const char* cCantBeRead = "it can't be read";
constexpr const char* cFrameworkScript = "@/libs/mavro/mavro.rc";

bool IsSource(const ProjectFile& file) {
  return file.type == cCppSource || file.type == cCSource;
}

const std::string& CompilerOf(const ProjectFile& file) {
  return file.type == cCppSource ? theIdeConfig.gpp : theIdeConfig.gcc;
}

// The failed action, and the last error of the system as its reason.
std::string Because(const char* what) {
  return std::string(what) + ": " + std::strerror(errno);
}

// Deletes only regular files, so that a device named as output is not deleted.
void DeleteFile(const std::string& path) {
  struct stat info;
  if (lstat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode)) unlink(path.c_str());
}

std::string WhyNotCompiled(const std::string& path, const ProjectFile* file) {
  if (path.empty()) return "Nothing compiled: no file is open";
  return "Nothing compiled: " + BaseName(path) +
         (file ? " is neither C nor C++" : " is not in the project");
}

// The name of the tool that a command line starts, for messages.
std::string ToolName(const std::string& line) {
  const std::vector<std::string> arguments = mavro::SplitCommandLine(line);
  return arguments.empty() ? "" : BaseName(arguments.front());
}

}  // namespace

Builder theBuilder;

void Builder::Bind(Project& newProject, Shell& newShell) {
  project = &newProject;
  shell = &newShell;
}

// A source in front is a project of its own as long as no other project is open.
bool Builder::HasProject() {
  const bool isFree = !project->isOpen || project->implicit;
  const std::string path = isFree ? shell->ActiveFile() : "";
  const int kind = FileKind(path);
  const bool isSource = kind == cCppSource || kind == cCSource;
  if (isSource && !project->FindFile(path)) project->OpenSingleFile(path);
  return project->isOpen;
}

void Builder::CompileCurrent() {
  if (IsBuilding() || !HasProject()) return;
  {
    const BuildInProgress guard;
    const bool ready = PrepareBuild(ErrorMark::cRemoved);
    shell->SaveChangedFiles();
    const std::string path = shell->ActiveFile();
    const ProjectFile* file = project->FindFile(path);
    if (ready && EnterProjectFolder() && file) CompileFile(*file, Scope::cAll);
    if (!file || !IsSource(*file)) whyNothing = WhyNotCompiled(path, file);
  }
  Summary();
}

void Builder::Make(Scope scope) {
  if (IsBuilding() || !HasProject()) return;
  Build(scope);
  Summary();
}

bool Builder::PrepareBuild(ErrorMark mark) {
  warningCount = errorCount = failedRuns = rowCount = 0;
  firstErrorRow = -1;
  compileLines = {};
  whyNothing.clear();
  for (const auto& file : project->Files()) NoteUnusualName(SourceName(*file));
  abortRequested = useFrameworkRes = wasStopped = false;
  times = {};
  check.reset();
  const ProjectFlags flags = ComposeFlags(*project, theIdeConfig);
  includeFlags = flags.include;
  libFlags = flags.link;
  shell->ClearOutput();
  shell->PumpMessages();
  shell->ShowBottomPage(BottomPage::cOutput);
  shell->ClearErrorRows();
  outDirName = BaseName(project->outputFolder);
  outFile = project->outName.empty() ? project->target : project->outName;
  objectNames = ObjectNames(*project, outDirName);
  const bool ready = EnsureOutputFolder();
  records.Open(project->outputFolder);
  shell->SetStopCommand(cStopCommand);
  if (mark == ErrorMark::cRemoved) shell->RemoveErrorMark();
  return ready;
}

// A compiler prints a source's name as it stands in its command line.
void Builder::NoteUnusualName(const std::string& name) {
  const bool isUnusual = name.find(':') != std::string::npos || name.starts_with(' ');
  if (isUnusual) compileLines.unusualNames.push_back(name);
}

bool Builder::EnsureOutputFolder() {
  const std::string& folder = project->outputFolder;
  constexpr mode_t cLessUserMask = 0777;
  if (mavro::IsFolder(folder) || mkdir(folder.c_str(), cLessUserMask) == 0) return true;
  Refuse(folder, Because("it can't be made"));
  return false;
}

bool Builder::EnterProjectFolder() {
  const std::string folder = project->folder.empty() ? "/" : project->folder;
  if (chdir(folder.c_str()) == 0) return true;
  Refuse(folder, Because("it can't be entered"));
  return false;
}

bool Builder::Build(Scope scope) {
  if (IsBuilding() || !HasProject()) return false;
  const BuildInProgress guard;
  const bool ready = PrepareBuild(ErrorMark::cRemoved);
  shell->SaveChangedFiles();
  if (!ready || !EnterProjectFolder()) return false;
  const std::time_t start = std::time(nullptr);
  bool result = true;
  if (project->implicit) {
    if (!project->Files().empty()) result = BuildSingle(*project->Files()[0], Scope::cStale);
  } else {
    const Outcome outcome = CompileFiles(scope);
    if (outcome != Outcome::cDone) return outcome == Outcome::cStopped;
    CompileResources(scope);
    result = failedRuns == 0 && MakeOutput();
    NameWhatIsNotBuilt();
  }
  LogMessage(*shell, "Build time [s]:", std::to_string(std::time(nullptr) - start));
  return result && Errors() == 0;
}

// The list is walked by index, because messages handled between two files may change it.
Builder::Outcome Builder::CompileFiles(Scope scope) {
  const std::string folder = project->folder;
  for (size_t i = 0; i < project->Files().size(); ++i) {
    const ProjectFile& file = *project->Files()[i];
    if (!IsSource(file)) continue;
    if (!CompileFile(file, scope)) return Outcome::cFailed;
    shell->PumpMessages();
    if (!project->isOpen || project->folder != folder) abortRequested = true;
    if (!abortRequested) continue;
    wasStopped = true;
    return Outcome::cStopped;
  }
  return Outcome::cDone;
}

bool Builder::CompileResources(Scope scope) {
  if (!project->resourceFile.empty()) {
    useFrameworkRes = false;
    return CompileResource(project->resourceFile, scope);
  }
  if (project->type != cFormApplication) return true;
  useFrameworkRes = true;
  return CompileResource(ExpandResourcePath(cFrameworkScript, MacroRoot(theIdeConfig.appDir)),
                         scope);
}

bool Builder::MakeOutput() {
  switch (project->type) {
    case cConsole:
    case cFormApplication:
    case cApiApplication:
      return Link();
    case cStaticLib:
      return Archive();
    default:
      return true;
  }
}

bool Builder::CompileFile(const ProjectFile& file, Scope scope) {
  const std::string object = objectNames.Of(file);
  const std::string line = CompileLine({
      .tool = ToolOf(CompilerOf(file)),
      .options = project->current->comp,
      .includeFlags = includeFlags,
      .setFlags = SetFlags(),
      .source = SourceName(file),
      .object = outDirName.empty() ? "" : object,
  });
  const Verdict verdict = Judge(file, object, line, scope);
  if (verdict != Verdict::cBuild) return verdict != Verdict::cRefused;
  LogMessage(*shell, "Compiling", file.name);
  LogMessage(*shell, line, "");
  RunTool({.line = line,
           .folder = "",
           .subject = file.name,
           .reader = &Builder::CompilerLine,
           .product = object,
           .inputs = ExistingInputs(times, {file.name}),
           .asksForReadFiles = true,
           .keepsProductOfFailure = false});
  return errorCount < 1;
}

bool Builder::BuildSingle(const ProjectFile& file, Scope scope) {
  const std::string program = ObjectPath(outDirName, file.name, "exe");
  const std::string line = SingleFileLine({
      .tool = ToolOf(CompilerOf(file)),
      .options = project->current->comp,
      .includeFlags = includeFlags,
      .strip = project->mode == cRelease,
      .source = SourceName(file),
      .program = program,
  });
  const Verdict verdict = Judge(file, ObjectPath(outDirName, file.name, "o"), line, scope);
  if (verdict != Verdict::cBuild) return verdict != Verdict::cRefused;
  LogMessage(*shell, "Building", line);
  RunTool({.line = line,
           .folder = "",
           .subject = file.name,
           .reader = &Builder::SingleFileToolLine,
           .product = program,
           .keepsProductOfFailure = true});
  return errorCount < 1;
}

bool Builder::CompileResource(const std::string& script, Scope scope) {
  if (theIdeConfig.windres.empty()) return true;
  const std::string object = ObjectPath(outDirName, script, "res");
  const std::string line = ResourceLine({
      .tool = ResourceToolPath(theIdeConfig, project->current->gcc),
      .script = script,
      .object = object,
      .options = theIdeConfig.windresOptions,
      .setFlags = SetFlags(),
      .frameworkFlags = ExpandMacros(" -I @/libs/mavro", MacroRoot(theIdeConfig.appDir)),
  });
  Staleness staleness = scope == Scope::cAll ? cForced : IsNewer(times, *project, script, object);
  const bool isGone = !times.Of(script);
  if (!staleness.stale && !isGone) staleness = records.Check(times, object, line);
  if (isGone && (staleness.stale || !times.Of(object))) {
    Refuse(script, cCantBeRead);
    return false;
  }
  if (!staleness.stale) return true;
  Observe(script, staleness);
  LogMessage(*shell, "Compiling resource", line);
  RunTool({.line = line,
           .folder = "",
           .subject = script,
           .reader = &Builder::EchoOnly,
           .product = object,
           .inputs = ExistingInputs(times, ResourceInputs(script)),
           .keepsProductOfFailure = false});
  return errorCount < 1;
}

bool Builder::Link() {
  const bool addsFrameworkRes = useFrameworkRes && !theIdeConfig.windres.empty();
  ObjectList objects = CollectObjects();
  const std::string product = outDirName + "/" + outFile;
  const std::string line = LinkLine({
      .tool = ToolOf(theIdeConfig.linker),
      .output = outFile,
      .objects = objects.arguments + (addsFrameworkRes ? " mavro.res" : ""),
      .libFlags = libFlags,
      .options = project->current->link,
  });
  if (!objects.staleness.stale && !objects.paths.empty())
    objects.staleness = records.Check(times, product, line);
  if (!objects.staleness.stale) return true;
  if (WouldOverwriteInput(outFile)) return false;
  Observe(outFile, objects.staleness);
  LogMessage(*shell, "Linking", line);
  shell->ShowBottomPage(BottomPage::cError);
  RunTool({.line = line,
           .folder = outDirName,
           .subject = outFile,
           .reader = &Builder::LinkerLine,
           .product = product,
           .inputs = ExistingInputs(times, LinkInputs(line, outDirName)),
           .keepsProductOfFailure = true});
  return errorCount < 1;
}

// An archive is written anew: the archiver would keep the members of sources that are gone.
bool Builder::Archive() {
  ObjectList objects = CollectObjects();
  const std::string target = project->MakeRelative(project->target);
  const std::string product = project->outputFolder + "/" + target;
  const std::string line = ArchiveLine(
      {.tool = ToolOf(theIdeConfig.ar), .target = target, .objects = objects.arguments});
  if (!objects.staleness.stale && !objects.paths.empty())
    objects.staleness = records.Check(times, product, line);
  if (!objects.staleness.stale) return true;
  if (WouldOverwriteInput(target)) return false;
  Observe(target, objects.staleness);
  const std::vector<InputFile> inputs = ExistingInputs(times, objects.paths);
  if (chdir(project->outputFolder.c_str()) != 0) {
    Refuse(project->outputFolder, Because("it can't be entered"));
    return false;
  }
  LogMessage(*shell, "Creating static lib", line);
  shell->ShowBottomPage(BottomPage::cError);
  DeleteFile(product);
  RunTool({.line = line,
           .folder = "",
           .subject = target,
           .reader = &Builder::ArchiverLine,
           .product = product,
           .inputs = inputs,
           .keepsProductOfFailure = true});
  if (!EnterProjectFolder()) return false;
  if (shell->ErrorRowCount() == 0) return true;
  shell->ShowBottomPage(BottomPage::cError);
  return false;
}

Builder::ObjectList Builder::CollectObjects() {
  const std::string target = outDirName + "/" + outFile;
  ObjectList list;
  const auto add = [&](const std::string& object) {
    if (!list.staleness.stale) list.staleness = IsNewer(times, *project, object, target);
    list.arguments += " " + FileArgument(BaseName(object));
    list.paths.push_back(object);
  };
  for (const auto& file : project->Files())
    if (IsSource(*file)) add(objectNames.Of(*file));
  if (!project->resourceFile.empty() && !theIdeConfig.windres.empty())
    add(ObjectPath(outDirName, project->resourceFile, "res"));
  return list;
}

// An output name with "../" in it can name a file of the project itself.
bool Builder::WouldOverwriteInput(const std::string& output) {
  const std::string path =
      TidyPath(IsAbsolutePath(output) ? output : project->outputFolder + "/" + output);
  const auto isOutput = [written = ReadDiskStamp(path)](const std::string& input) {
    return AreOneFile(written, ReadDiskStamp(input));
  };
  const bool isInput = project->FindFile(path) || isOutput(project->GetFullPath(project->name)) ||
                       isOutput(project->SessionPath()) ||
                       isOutput(project->GetFullPath(project->resourceFile));
  if (isInput) Refuse(output, "the output would overwrite a file of the project");
  return isInput;
}

// Nobody should wait for a program that this build doesn't make.
void Builder::NameWhatIsNotBuilt() {
  std::string names;
  for (const auto& file : project->Files())
    if (file->type == cUnknownKind) names += (names.empty() ? "" : ", ") + SourceName(*file);
  if (!names.empty()) LogMessage(*shell, "Not compiled", names);
  if (project->type == cDynamicLib || project->type == cOther)
    LogMessage(*shell, "Not linked", "projects of this type are only compiled");
}

void Builder::Summary() {
  shell->SetStopCommand(-1);
  if (Errors() == 0 && !whyNothing.empty()) {
    shell->SetStatus(whyNothing, "");
    if (rowCount > 0) shell->ShowBottomPage(BottomPage::cError);
    return LogMessage(*shell, whyNothing, "");
  }
  const char* result = Errors() != 0 ? "There ware errors!"
                       : wasStopped  ? "Build stopped"
                                     : "Build succeeded";
  const std::string text = std::string(result) + "  errors: " + std::to_string(Errors()) +
                           "  warnings: " + std::to_string(warningCount);
  shell->SetStatus(text, "");
  if (Errors() == 0) return LogMessage(*shell, text, "");
  mavro::Information(text);
  shell->ShowBottomPage(BottomPage::cError);
  shell->ShowErrorRow(std::max(firstErrorRow, 0));
}

void Builder::ClearOutput() {
  if (!project->isOpen || IsBuilding()) return;
  if (PrepareBuild(ErrorMark::cKept)) {
    DeleteOutputs(".o");
    DeleteOutputs(".res");
  }
  shell->SetStopCommand(-1);
}

void Builder::DeleteOutputs(std::string_view extension) {
  namespace fs = std::filesystem;
  std::error_code error;
  fs::directory_iterator entry(project->outputFolder, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    const std::string& path = entry->path().native();
    if (!path.ends_with(extension) || mavro::IsFolder(path)) continue;
    if (unlink(path.c_str()) != 0) Refuse(path, Because("it can't be deleted"));
  }
  if (error) Refuse(project->outputFolder, "it can't be read: " + error.message());
}

// A missing source without an object is refused: no rule makes it stale, and the link would fail
// because the object is missing or, worse, leave the old program.
Builder::Verdict Builder::Judge(const ProjectFile& file, const std::string& object,
                                const std::string& line, Scope scope) {
  Staleness staleness = scope == Scope::cAll ? cForced : Check().NeedsCompile(file, object);
  const bool isGone = !times.Of(file.name);
  if (!staleness.stale && !isGone && IsSource(file)) staleness = records.Check(times, object, line);
  if (!staleness.stale && !(isGone && !times.Of(object))) return Verdict::cUpToDate;
  if (!IsSource(file)) {
    AddRow({file.name, 0, " -> unsupported source file"});
    return Verdict::cUnsupported;
  }
  if (isGone) {
    Refuse(file.name, cCantBeRead);
    return Verdict::cRefused;
  }
  Observe(SourceName(file), staleness);
  return Verdict::cBuild;
}

StaleCheck& Builder::Check() {
  const bool isCurrent =
      check && checkedLastId == project->lastFileId && checkedFiles == project->Files().size();
  if (!isCurrent) {
    check.emplace(*project, times);
    checkedLastId = project->lastFileId;
    checkedFiles = project->Files().size();
  }
  return *check;
}

void Builder::Observe(const std::string& file, const Staleness& staleness) {
  if (staleObserver) staleObserver(file, staleness.reason);
}

void Builder::RunTool(const ToolRun& run) {
  if (run.line.find('\0') != std::string::npos)
    return Refuse(ToolName(run.line), "its command line holds a NUL byte");
  const std::string& folder = project->outputFolder;
  if (faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) != 0)
    return Refuse(folder, Because("it can't be written"));
  runner.SetOutput([this, reader = run.reader](const std::string& line) { TakeLine(reader, line); },
                   run.folder);
  current = {.errorsBefore = errorCount, .rowsBefore = rowCount};
  records.Drop(run.product);
  runner.environment = ToolEnvironment(std::getenv("LC_ALL"));
  if (run.asksForReadFiles) runner.environment.push_back(AskForReadFiles(outDirName));
  const FileTimes::Time start = TimeOfNow();
  const bool started = runner.Execute(run.line, mavro::SpawnConsole::Mode::cBlocking);
  if (const std::string held = TakeHeldNotes(compileLines); !held.empty() && rowCount > 0)
    shell->AppendToLastErrorRow(held);
  LogMessage(*shell, "", "");
  times.Forget(run.product);
  std::vector<InputFile> inputs = run.inputs;
  if (run.asksForReadFiles)
    for (InputFile& input : TakeReadFiles(times, *project, outDirName, start))
      inputs.push_back(std::move(input));
  if (!started || runner.exitCode != 0) return NoteFailure(run, started);
  if (errorCount == current.errorsBefore) records.Add(run.product, run.line, inputs);
}

// A tool that failed may leave a file that is cut off and newer than its sources: the next build
// would take it for a good one.
void Builder::NoteFailure(const ToolRun& run, bool started) {
  const std::string tool = ToolName(run.line);
  if (!started) return CountFailedRun(run, tool + " can't be started");
  if (runner.exitSignal != 0) {
    DeleteFile(run.product);
    return Refuse(run.subject, tool + " was ended by signal " + std::to_string(runner.exitSignal) +
                                   ", what it wrote is deleted");
  }
  if (!run.keepsProductOfFailure) DeleteFile(run.product);
  const std::string what = tool + " ended with status " + std::to_string(runner.exitCode);
  shell->AppendOutput(what + "\r\n");
  CountFailedRun(run, current.lastLine.empty() ? what : what + ": " + current.lastLine);
}

void Builder::CountFailedRun(const ToolRun& run, const std::string& what) {
  if (errorCount != current.errorsBefore) return;
  ++failedRuns;
  int row = current.firstPlainRow >= 0 ? current.firstPlainRow : current.rowsBefore;
  if (rowCount == current.rowsBefore) AddRow({run.subject, 0, " -> " + what});
  if (firstErrorRow < 0) firstErrorRow = row;
}

void Builder::TakeLine(LineReader reader, const std::string& line) {
  shell->AppendOutput(line + "\r\n");
  if (line.find_first_not_of(" \t\r") != std::string::npos) current.lastLine = line;
  const LineMeaning meaning = (this->*reader)(line);
  if (meaning.severity == LineMeaning::cError) ++errorCount;
  if (meaning.severity == LineMeaning::cWarning) ++warningCount;
  if (meaning.kind == LineMeaning::cNewRow) AddRow(meaning.row, meaning.severity);
  if (meaning.kind == LineMeaning::cAppendToLastRow) shell->AppendToLastErrorRow(meaning.row.text);
}

// With debug information the linker knows the source: such a row leads there.
LineMeaning Builder::LinkerLine(const std::string& line) {
  LineMeaning meaning = ReadLinkLine(line);
  const LinePlace place = PlaceInLinkLine(line);
  if (meaning.kind != LineMeaning::cNewRow || place.file.empty()) return meaning;
  const std::string file(place.file);
  if (!mavro::FileExists(project->GetFullPath(file))) return meaning;
  meaning.row.file = file;
  meaning.row.line = place.line;
  return meaning;
}

// Compiler and linker in one run. The object that the linker speaks of is gone by then: its rows
// lead to the source.
LineMeaning Builder::SingleFileToolLine(const std::string& line) {
  if (!IsLinkerLine(line)) return ReadCompileLine(compileLines, line);
  LineMeaning meaning = LinkerLine(line);
  if (meaning.row.line == 0) meaning.row.file = SourceName(*project->Files()[0]);
  return meaning;
}

void Builder::AddRow(const ErrorRow& row, LineMeaning::Severity severity) {
  if (severity == LineMeaning::cError && firstErrorRow < 0) firstErrorRow = rowCount;
  if (severity == LineMeaning::cPlain && current.firstPlainRow < 0)
    current.firstPlainRow = rowCount;
  ++rowCount;
  shell->AddErrorRow({project->MakeRelative(row.file), row.line, row.text});
}

void Builder::Refuse(const std::string& file, const std::string& why) {
  ++errorCount;
  AddRow({file, 0, " -> " + why}, LineMeaning::cError);
}

std::string Builder::ToolOf(const std::string& name) const {
  return ToolPath(theIdeConfig, project->current->gcc, name);
}

const std::string& Builder::SetFlags() const {
  return theIdeConfig.toolSets[static_cast<size_t>(CompilerSet(project->current->gcc))].flags;
}

std::string Builder::SourceName(const ProjectFile& file) const {
  return project->RelativeIfSame(file.name);
}

}  // namespace zendry
