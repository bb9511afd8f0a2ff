#pragma once

#include <QPalette>
#include <initializer_list>

namespace test {

// A dark palette as desktops have them, for looks on a dark ground.
inline QPalette DarkPalette() {
  QPalette dark;
  const auto set = [&dark](std::initializer_list<QPalette::ColorRole> roles, QColor color) {
    for (const auto role : roles) dark.setColor(role, color);
  };
  set({QPalette::Window, QPalette::Button}, QColor(53, 53, 53));
  set({QPalette::Base, QPalette::AlternateBase}, QColor(35, 35, 35));
  set({QPalette::WindowText, QPalette::Text, QPalette::ButtonText}, QColor(230, 230, 230));
  set({QPalette::Highlight}, QColor(42, 130, 218));
  set({QPalette::HighlightedText}, Qt::white);
  set({QPalette::PlaceholderText}, QColor(150, 150, 150));
  set({QPalette::Light}, QColor(80, 80, 80));
  set({QPalette::Mid}, QColor(40, 40, 40));
  set({QPalette::Dark}, QColor(30, 30, 30));
  dark.setColor(QPalette::Disabled, QPalette::WindowText, QColor(120, 120, 120));
  dark.setColor(QPalette::Disabled, QPalette::ButtonText, QColor(120, 120, 120));
  dark.setColor(QPalette::Disabled, QPalette::Text, QColor(120, 120, 120));
  return dark;
}

}  // namespace test
