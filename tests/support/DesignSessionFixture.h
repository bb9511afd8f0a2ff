#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "EditorFixture.h"
#include "frmedt/DesignFrame.h"
#include "frmedt/LossDlg.h"

namespace test {

// The designer in the whole program, from its key to the text in the editor.
//
//   ide.Run({}, [&] {
//     Open("dlg.h", cDialogForm);
//     Design([](zendry::DesignFrame& frame) { MoveButton(frame); ... });
//   });
class DesignSessionFixture : public EditorFixture {
 protected:
  // A form with one button.
  static constexpr char cDialogForm[] =
      "#pragma once\n#include<mavro>\n\nclass Dlg: public Form\n{\n\ttypedef Dlg This;\npublic:\n"
      "\t//!decl\n\tButton button1;\n\t//!end\n\tDlg() {\n\t\tInitialize();\n\t}\nprivate:\n"
      "\tvoid Initialize() {\n\t\t//!init\n\t\tthis->SetBounds(0, 0, 300, 200);\n"
      "\t\t//!<Button>\n\t\tbutton1.SetBounds(40, 40, 80, 24);\n\t\tbutton1.text = \"Go\";\n"
      "\t\tthis->Add(&button1);\n\t\t//!end\n\t}\n};\n";

  // Opens the designer with its key on the tab in front; `script` gets its window.
  void Design(const std::function<void(zendry::DesignFrame&)>& script) {
    ide.OnDialog([&](mavro::Form& form) {
      auto* frame = dynamic_cast<zendry::DesignFrame*>(&form);
      EXPECT_TRUE(frame) << form.text;
      if (frame)
        script(*frame);
      else
        form.Close();
    });
    IdeDriver::Press(Qt::Key_F11);
  }
  // The same where a list of lost statements comes first.
  void DesignAfter(mavro::Button zendry::LossDlg::*choice, std::vector<std::string>& rows,
                   const std::function<void(zendry::DesignFrame&)>& script) {
    ide.OnDialog([&, choice](mavro::Form& form) {
      auto* dialog = dynamic_cast<zendry::LossDlg*>(&form);
      ASSERT_TRUE(dialog) << form.text;
      rows = IdeDriver::Rows(dialog->list);
      if (script)
        ide.OnDialog([&](mavro::Form& next) {
          if (auto* frame = dynamic_cast<zendry::DesignFrame*>(&next)) script(*frame);
        });
      Shot(form, "designer-losses");
      Click(dialog->*choice);
    });
    IdeDriver::Press(Qt::Key_F11);
  }
  static void MoveButton(zendry::DesignFrame& frame) {
    frame.editor.Select(frame.editor.FindControl("button1")->ctrl, false);
    frame.Command(zendry::cMoveRightCommand);
  }
  static std::string Replaced(std::string text, const std::string& what, const std::string& with) {
    return text.replace(text.find(what), what.size(), with);
  }
  static bool HasText(const std::string& part) {
    return Front().GetText().find(part) != std::string::npos;
  }
};

}  // namespace test
