#include <CLI/CLI.hpp>
#include <cstdio>
#include <string>
#include <vector>

#include "base/ControlBytes.h"
#include "frmedt/FormFiles.h"

// zendry-form: checks and rewrites the forms in sources.

using namespace zendry;

namespace {

enum ExitStatus { cDone = 0, cNotDone = 1, cWrongUse = 2 };

struct Options {
  std::vector<std::string> files;
  bool check = false;
  bool rewrite = false;
  bool keep = false;
};

int Run(const Options& options) {
  FormFiles forms(
      [](const std::string& line) { std::printf("%s\n", MarkControlBytes(line).c_str()); });
  const FormFiles::Losses losses =
      options.keep ? FormFiles::Losses::cKeep : FormFiles::Losses::cDrop;
  bool isDone = true;
  for (const std::string& file : options.files)
    isDone &= options.rewrite ? forms.Rewrite(file, losses) : forms.Check(file);
  const bool isSaid = std::fflush(stdout) == 0;
  if (!isSaid) std::fprintf(stderr, "zendry-form: standard output can't be written\n");
  return isDone && isSaid ? cDone : cNotDone;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  CLI::App app("Checks and rewrites the forms in sources.", "zendry-form");
  app.set_version_flag("--version", "zendry-form " ZENDRY_VERSION);
  CLI::Option* check = app.add_flag(
      "--check", options.check,
      "tell each statement between a form's markers that the designer wouldn't write back");
  CLI::Option* rewrite = app.add_flag(
      "--rewrite", options.rewrite, "write the forms as the designer does when nothing is changed");
  app.add_flag("--keep", options.keep, "move what would be lost to behind the end of its region")
      ->needs(rewrite);
  check->excludes(rewrite);
  app.add_option("FILE", options.files, "the sources; of a form in two files, either one");
  app.footer(
      "Exit status: 0 done and nothing lost, 1 --check found something, a file couldn't be read "
      "or\n"
      "written, or a form not be opened, 2 wrong command line.");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? cDone : cWrongUse;
  }
  if (options.files.empty() || options.check == options.rewrite) {
    std::fprintf(stderr, "zendry-form: %s\n",
                 options.files.empty() ? "FILE is required" : "--check or --rewrite is required");
    return cWrongUse;
  }
  return Run(options);
}
