// SPDX-License-Identifier: MIT-0
#pragma once

#include <mavro>

#include "person.h"

// Asks for a person. Data links copy the values into the fields when the form is shown, and back
// when it is closed with OK; Cancel leaves the person as it was.
class PersonForm : public Form {
 public:
  typedef PersonForm This;
  explicit PersonForm(Person& shown);

 private:
  class TextSource final : public DataSource {
   public:
    explicit TextSource(std::string& itsText) : value(itsText) {}
    void Get(std::string& out) override { out = value; }
    void Set(const std::string& text) override { value = text; }

   private:
    std::string& value;
  };
  class BoolSource final : public DataSource {
   public:
    explicit BoolSource(bool& itsValue) : value(itsValue) {}
    void Get(std::string& out) override { out.assign(1, value ? '1' : '0'); }
    void Set(const std::string& text) override { value = text == "1"; }

   private:
    bool& value;
  };

  void Initialize();

  TextSource nameSource, townSource;
  BoolSource memberSource;
  Label nameLabel, townLabel;
  Edit name, town;
  CheckBox member;
  Button ok, cancel;
  DataLink nameLink{&name}, townLink{&town};
  CheckDataLink memberLink{&member};
};
