#pragma once

#include <gtest/gtest.h>

#include <QTest>
#include <string>

#include "IdeDriver.h"
#include "editor/EditTabs.h"

namespace test {

// Editing in the whole program: the open files and keys for the editor in front.
class EditorFixture : public testing::Test {
 protected:
  static zendry::EditTabs& Tabs() { return zendry::theMainForm->editTabs; }
  static zendry::CppEditor& Front() { return *Tabs().Active()->editor; }
  zendry::CppEditor& Open(const std::string& name, const std::string& text) {
    return *Tabs().OpenFile(ide.files.Write(name, text));
  }
  static void Type(const std::string& text) {
    QTest::keyClicks(QApplication::focusWidget(), QString::fromStdString(text));
  }

  IdeDriver ide;
};

}  // namespace test
