#include <QApplication>
#include <QFontDatabase>
#include <QMap>
#include <QPalette>
#include <algorithm>
#include <initializer_list>

#include "Look.h"
#include "QtText.h"

namespace mavro {

namespace {

using Roles = std::initializer_list<QPalette::ColorRole>;

Theme theTheme = Theme::cSystem;

// The colours of one theme.
struct Shades {
  QRgb ground, field, otherField, text, faint, light, mid, dark, shadow, marked, link;
};

constexpr Shades cLightShades = {0xFFEFEFEF, 0xFFFFFFFF, 0xFFF7F7F7, 0xFF1A1A1A,
                                 0xFF8E8E8E, 0xFFFFFFFF, 0xFFB8B8B8, 0xFF9F9F9F,
                                 0xFF767676, 0xFF2A76C6, 0xFF0057AE};
constexpr Shades cDarkShades = {0xFF353535, 0xFF232323, 0xFF2B2B2B, 0xFFE6E6E6,
                                0xFF848484, 0xFF505050, 0xFF282828, 0xFF1E1E1E,
                                0xFF141414, 0xFF2A76C6, 0xFF6CB4F2};

QPalette PaletteOf(const Shades& shades) {
  QPalette palette;
  const auto set = [&palette](Roles roles, QRgb color) {
    for (const auto role : roles) palette.setColor(role, QColor::fromRgb(color));
  };
  set({QPalette::Window, QPalette::Button, QPalette::ToolTipBase}, shades.ground);
  set({QPalette::Base}, shades.field);
  set({QPalette::AlternateBase}, shades.otherField);
  set({QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText},
      shades.text);
  set({QPalette::BrightText, QPalette::HighlightedText}, 0xFFFFFFFF);
  set({QPalette::Light, QPalette::Midlight}, shades.light);
  set({QPalette::Mid}, shades.mid);
  set({QPalette::Dark}, shades.dark);
  set({QPalette::Shadow}, shades.shadow);
  set({QPalette::Highlight}, shades.marked);
  set({QPalette::PlaceholderText}, shades.faint);
  set({QPalette::Link, QPalette::LinkVisited}, shades.link);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, QColor::fromRgb(shades.faint));
  return palette;
}

// The kinds of widgets that make room for their texts.
constexpr const char* cFreeKinds[] = {"QMenuBar",   "QMenu",      "QTabBar",
                                      "QTreeView",  "QTableView", "QListView",
                                      "QStatusBar", "QTipLabel",  "QHeaderView"};

}  // namespace

void SetTheme(Theme theme) {
  if (theme == theTheme) return;
  theTheme = theme;
  if (theme == Theme::cSystem)
    QApplication::setPalette(QPalette());
  else
    QApplication::setPalette(PaletteOf(theme == Theme::cDark ? cDarkShades : cLightShades));
}

Theme CurrentTheme() {
  return theTheme;
}

// The desktop may have a font of its own for a kind: it comes back with 0.
void SetInterfaceLetters(int points) {
  static QMap<QString, QFont> ofDesktop;
  if (points == 0 && ofDesktop.isEmpty()) return;
  for (const char* kind : cFreeKinds) {
    if (!ofDesktop.contains(kind)) ofDesktop.insert(kind, QApplication::font(kind));
    QFont font = ofDesktop.value(kind);
    if (points != 0) font.setPointSize(std::clamp(points, cLeastLetters, cMostLetters));
    QApplication::setFont(font, kind);
  }
}

std::vector<std::string> FontFaces() {
  std::vector<std::string> faces;
  for (const QString& family : QFontDatabase::families()) faces.push_back(FromScreen(family));
  std::sort(faces.begin(), faces.end());
  faces.erase(std::unique(faces.begin(), faces.end()), faces.end());
  return faces;
}

}  // namespace mavro
