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
#include "config/BuildSettings.h"
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

std::string WhyNotCompiled(const std::string& path, const ProjectFile* file) {
  if (path.empty()) return "Nothing compiled: no file is open";
  return "Nothing compiled: " + BaseName(path) +
         (file ? " is neither C nor C++" : " is not in the project");
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

bool Builder::PassesGate() {
  wasDenied = gate && !gate(*project);
  if (wasDenied) shell->SetStatus("Nothing is run, as you wished", "");
  return !wasDenied;
}

void Builder::CompileCurrent() {
  if (IsBuilding() || !HasProject() || !PassesGate()) return;
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
  earlyLines = compileLines;
  abortRequested = useFrameworkRes = wasStopped = false;
  plannedSteps = begunSteps = endedSteps = 0;
  buildFolder = project->folder;
  launcherState =
      StateOfLauncher(LauncherOf(theIdeConfig, theBuildSettings, project->current->gcc));
  saidLost = false;
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
  running.Open(project->outputFolder);
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
  if (chdir(folder.c_str()) == 0) {
    times.SetCurrentFolder(folder.ends_with('/') ? folder : folder + "/");
    return true;
  }
  Refuse(folder, Because("it can't be entered"));
  return false;
}

bool Builder::Build(Scope scope) {
  if (IsBuilding() || !HasProject() || !PassesGate()) return false;
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
    if (MustStop()) return Errors() == 0;
    result = failedRuns == 0 && MakeOutput();
    NameWhatIsNotBuilt();
  }
  LogMessage(*shell, "Build time [s]:", std::to_string(std::time(nullptr) - start));
  return result && Errors() == 0;
}

Builder::Outcome Builder::CompileFiles(Scope scope) {
  const std::vector<PlannedFile> plan = PlanFiles(scope);
  plannedSteps = static_cast<int>(plan.size());
  return MustStop() ? Outcome::cStopped : RunPlan(plan);
}

// The sources that must be compiled. The list is walked by index, because messages handled between
// two files may change it.
std::vector<Builder::PlannedFile> Builder::PlanFiles(Scope scope) {
  std::vector<PlannedFile> plan;
  for (size_t i = 0; i < project->Files().size() && !MustStop(); ++i) {
    const ProjectFile& file = *project->Files()[i];
    if (!IsSource(file)) continue;
    const Judgement judgement = JudgeCompile(file, scope);
    if (judgement.verdict == Verdict::cUpToDate)
      shell->PumpMessages();
    else
      plan.push_back({file.id, judgement.verdict == Verdict::cRefused, judgement.reason});
  }
  return plan;
}

Builder::Outcome Builder::RunPlan(const std::vector<PlannedFile>& plan) {
  const int jobs = JobsFor(plan.size());
  size_t next = 0;
  const auto mayBegin = [&] {
    return next < plan.size() && errorCount == 0 && !steps.HasError() && !MustStop();
  };
  for (;;) {
    while (steps.Running() < jobs && mayBegin() && BeginPlanned(plan[next])) ++next;
    if (steps.IsEmpty()) break;
    if (AwaitSteps() && errorCount == 0) shell->PumpMessages();
  }
  return errorCount > 0 ? Outcome::cFailed : MustStop() ? Outcome::cStopped : Outcome::cDone;
}

// A project that was closed or replaced meanwhile ends the build.
bool Builder::MustStop() {
  if (!project->isOpen || project->folder != buildFolder) abortRequested = true;
  wasStopped |= abortRequested;
  return abortRequested;
}

// False if the machine has no room for one more process now. A file that was removed meanwhile is
// passed over.
bool Builder::BeginPlanned(const PlannedFile& planned) {
  const int index = project->IndexOfFile(planned.id);
  if (index < 0) return true;
  const ProjectFile& file = *project->Files()[static_cast<size_t>(index)];
  ToolStep step = planned.isRefused ? ToolStep{.refusal = ToolStep::Refusal{file.name, cCantBeRead}}
                                    : CompileStep(file, planned.reason);
  if (!BeginStep(std::move(step))) return false;
  ++begunSteps;
  ShowProgress(BaseName(file.name));
  return true;
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
  const Judgement judgement = JudgeCompile(file, scope);
  if (const auto refused = Refusal(file, judgement)) return *refused;
  plannedSteps = begunSteps = 1;
  RunAlone(CompileStep(file, judgement.reason));
  return errorCount < 1;
}

ToolStep Builder::CompileStep(const ProjectFile& file, const std::string& reason) {
  const std::string object = objectNames.Of(file);
  ToolStep step = {.kind = ToolKind::cCompiler,
                   .line = CompileLineOf(file),
                   .folder = "",
                   .subject = file.name,
                   .product = object,
                   .inputs = ExistingInputs(times, {file.name}),
                   .asksForReadFiles = true,
                   .keepsProductOfFailure = false,
                   .staleFile = SourceName(file),
                   .reason = reason};
  if (!launcherState.name.empty()) PutLauncherBefore(step);
  step.captions = {{"Compiling", file.name}, {step.line, ""}};
  return step;
}

// The records keep the line as it is without launcher, so that another launcher makes no object
// stale.
void Builder::PutLauncherBefore(ToolStep& step) const {
  step.launcher = launcherState.name;
  step.recordedLine = step.line;
  step.readFilesPath = step.product + ".read";
  step.lineWithoutLauncher =
      step.line + AskForReadFilesBySwitches(step.readFilesPath, theBuildSettings.watchAllHeaders);
  step.line = mavro::QuoteArgument(step.launcher) + " " + step.lineWithoutLauncher;
  step.mayBeLostElsewhere = IsDistributing(step.launcher);
}

std::vector<CompileCommand> Builder::CompileCommands() {
  includeFlags = ComposeFlags(*project, theIdeConfig).include;
  outDirName = BaseName(project->outputFolder);
  objectNames = ObjectNames(*project, outDirName);
  std::vector<CompileCommand> commands;
  for (const auto& file : project->Files())
    if (IsSource(*file))
      commands.push_back({.folder = project->folder,
                          .file = SourceName(*file),
                          .line = CompileLineOf(*file),
                          .object = objectNames.Of(*file)});
  return commands;
}

std::string Builder::CompileLineOf(const ProjectFile& file) const {
  return CompileLine({
      .tool = ToolOf(CompilerOf(file)),
      .options = project->current->comp,
      .includeFlags = includeFlags,
      .setFlags = SetFlags(),
      .source = SourceName(file),
      .object = outDirName.empty() ? "" : objectNames.Of(file),
  });
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
  const Judgement judgement = Judge(file, ObjectPath(outDirName, file.name, "o"), line, scope);
  if (const auto refused = Refusal(file, judgement)) return *refused;
  plannedSteps = begunSteps = 1;
  RunAlone({.kind = ToolKind::cSingleFile,
            .line = line,
            .folder = "",
            .subject = file.name,
            .product = program,
            .captions = {{"Building", line}},
            .staleFile = SourceName(file),
            .reason = judgement.reason});
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
  RunAlone({.kind = ToolKind::cResource,
            .line = line,
            .folder = "",
            .subject = script,
            .product = object,
            .inputs = ExistingInputs(times, ResourceInputs(script)),
            .keepsProductOfFailure = false,
            .captions = {{"Compiling resource", line}},
            .staleFile = script,
            .reason = staleness.reason});
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
  RunAlone({.kind = ToolKind::cLinker,
            .line = line,
            .folder = outDirName,
            .subject = outFile,
            .product = product,
            .inputs = ExistingInputs(times, LinkInputs(line, outDirName)),
            .captions = {{"Linking", line}},
            .staleFile = outFile,
            .reason = objects.staleness.reason});
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
  if (access(project->outputFolder.c_str(), X_OK) != 0) {
    Refuse(project->outputFolder, Because("it can't be entered"));
    return false;
  }
  DeleteRegularFile(product);
  RunAlone({.kind = ToolKind::cArchiver,
            .line = line,
            .folder = project->outputFolder,
            .subject = target,
            .product = product,
            .inputs = ExistingInputs(times, objects.paths),
            .captions = {{"Creating static lib", line}},
            .staleFile = target,
            .reason = objects.staleness.reason});
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
  const auto isBuilt = [](const auto& file) { return IsSource(*file); };
  const bool isAnyBuilt = !project->resourceFile.empty() ||
                          std::any_of(project->Files().begin(), project->Files().end(), isBuilt);
  if (!isAnyBuilt) whyNothing = "Nothing built: no file of the project is compiled";
  if (project->type == cDynamicLib || project->type == cOther)
    LogMessage(*shell, "Not linked", "projects of this type are only compiled");
}

void Builder::Summary() {
  if (wasDenied) return;
  shell->SetStopCommand(-1);
  shell->SetProgress("", 0, 0);
  running.Forget();
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

Staleness Builder::CheckRecord(const std::string& object, const std::string& line) {
  const Staleness staleness = records.Check(times, object, line);
  if (staleness.stale || !theBuildSettings.watchAllHeaders || records.HasAllReadFiles(object))
    return staleness;
  return {true, "not all files that " + object + " was made of are known"};
}

// A missing source without an object is refused: no rule makes it stale, and the link would fail
// because the object is missing or, worse, leave the old program.
Builder::Judgement Builder::Judge(const ProjectFile& file, const std::string& object,
                                  const std::string& line, Scope scope) {
  Staleness staleness = scope == Scope::cAll ? cForced : Check().NeedsCompile(file, object);
  const bool isGone = !times.Of(file.name);
  if (!staleness.stale && !isGone && IsSource(file)) staleness = CheckRecord(object, line);
  if (!staleness.stale && !(isGone && !times.Of(object))) return {Verdict::cUpToDate};
  if (!IsSource(file)) return {Verdict::cUnsupported};
  if (isGone) return {Verdict::cRefused};
  return {Verdict::cBuild, staleness.reason};
}

Builder::Judgement Builder::JudgeCompile(const ProjectFile& file, Scope scope) {
  return Judge(file, objectNames.Of(file), CompileLineOf(file), scope);
}

std::optional<bool> Builder::Refusal(const ProjectFile& file, const Judgement& judgement) {
  switch (judgement.verdict) {
    case Verdict::cBuild:
      return {};
    case Verdict::cUnsupported:
      AddRow({file.name, 0, " -> unsupported source file"});
      return true;
    case Verdict::cRefused:
      Refuse(file.name, cCantBeRead);
      return false;
    default:
      return true;
  }
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
