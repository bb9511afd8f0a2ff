#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QProcess>
#include <filesystem>

#include "EditorForm.h"
#include "FakePaper.h"
#include "PageSetup.h"
#include "PrintCommands.h"
#include "ScriptedDialogs.h"
#include "TempFolder.h"

// Prints texts of an editor, and reads what is on paper as other readers of PDF see it.

namespace mavro {

using Outcome = Printer::Outcome;
using test::EditorForm;
using test::FakePaper;

inline std::string RunTool(const char* tool, const QStringList& arguments) {
  QProcess process;
  process.start(tool, arguments);
  EXPECT_TRUE(process.waitForFinished()) << tool;
  EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
  return process.readAllStandardOutput().toStdString();
}

class PrintTest : public testing::Test {
 protected:
  PrintTest() { thePageSetup = {}; }
  ~PrintTest() override {
    thePageSetup = {};
    chosen = nullptr;
  }

  // Runs `script` with an editor that has a text.
  void With(const std::string& content, const std::function<void(EditorForm&)>& script) {
    EditorForm form;
    test::RunEditor(form, [&] {
      form.editor.options->monospaced = true;
      form.editor.applyOptions();
      form.Fill(content);
      job = {&form.editor, "a.cpp", "/src/a.cpp", {}};
      script(form);
    });
  }
  std::string Path() const { return folder.Path("out.pdf"); }
  // What a page says, with one blank for several.
  std::string Text(int page = 1) const {
    const QString number = QString::number(page);
    const std::string text = RunTool(
        "pdftotext", {"-layout", "-f", number, "-l", number, QString::fromStdString(Path()), "-"});
    std::string squeezed;
    for (const char c : text)
      if (c != ' ' || !squeezed.ends_with(' ')) squeezed += c;
    return squeezed;
  }
  int PageCount() const {
    const std::string info = RunTool("pdfinfo", {QString::fromStdString(Path())});
    return std::stoi(info.substr(info.find("Pages:") + 6));
  }
  // A page as a picture of 50 dots an inch; it is kept for people to look at.
  QImage Picture(const std::string& name, int page = 1) const {
    std::filesystem::create_directories(SHOTS_FOLDER);
    const QString base = QString::fromStdString(std::string(SHOTS_FOLDER) + "/print-" + name);
    RunTool("pdftoppm", {"-r", "100", "-png", "-singlefile", "-f", QString::number(page),
                         QString::fromStdString(Path()), base});
    return QImage(base + ".png");
  }
  // Prints on fake paper, after the print dialog has answered so.
  Outcome Print(const PrintQuestion& answer) {
    static PrintQuestion given;
    given = answer;
    chosen = this;
    InstallQtPrinting();
    const PrintPlatform saved = Printing();
    Printing().choosePrinter = [](PrintQuestion& question, const PageSetup&) {
      chosen->couldSelect = question.canSelect;
      question = given;
      return std::unique_ptr<PrintDevice>(std::make_unique<FakePaper>(400, 200, chosen->log));
    };
    thePageSetup.left = thePageSetup.right = thePageSetup.top = thePageSetup.bottom = 0;
    thePageSetup.hasNumbers = false;
    const Outcome outcome = PrintEditor(job);
    Printing() = saved;
    return outcome;
  }
  using Texts = std::vector<std::string>;

  test::TempFolder folder;
  test::ScriptedDialogs dialogs;
  PrintJob job;
  FakePaper::Log log;
  bool couldSelect = false;
  static inline PrintTest* chosen = nullptr;
};

inline constexpr char cSmall[] = "// one\nint main() {\n\treturn 0;  // two\n}\n";

inline std::string Lines(int count) {
  std::string text;
  for (int i = 1; i <= count; ++i) text += "int line" + std::to_string(i) + ";\n";
  return text;
}

}  // namespace mavro
