// make-strip: composes a strip of equal pictures from a list of icon names, at build time.

#include <CLI/CLI.hpp>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace zendry {
namespace {

// A picture to draw into a cell: an SVG file or the name of an icon of the theme, with its folder,
// and the square that it fills, in units of the list's grid. A side of 0 means the whole cell.
struct Layer {
  std::string name;
  int x = 0, y = 0, side = 0;
};

struct Strip {
  std::map<int, std::vector<Layer>> cells;  // layers from bottom to top
  int grid = 16;
  std::string error;  // "FILE:LINE: text"; empty if the list could be read
};

constexpr int cJpegQuality = 92;

struct Options {
  std::string list;
  std::string theme = "/usr/share/icons/Tango";
  std::string size;
  std::string output;
  int percent = 100;
};

// "NAME" or "NAME@X,Y,SIDE".
bool ReadLayer(const std::string& word, Layer& layer) {
  const size_t at = word.find('@');
  layer.name = word.substr(0, at);
  if (at == std::string::npos) return true;
  return std::sscanf(word.c_str() + at, "@%d,%d,%d", &layer.x, &layer.y, &layer.side) == 3 &&
         layer.side > 0;
}

// Reads a line "grid NUMBER" or "INDEX LAYER [+ LAYER]...".
bool ReadLine(std::istringstream words, Strip& strip) {
  std::string first, word;
  if (!(words >> first)) return true;
  if (first == "grid") return words >> strip.grid && strip.grid > 0;
  char* end = nullptr;
  const long index = std::strtol(first.c_str(), &end, 0);
  std::vector<Layer> layers;
  while (words >> word) {
    if (word == "+") continue;
    if (!ReadLayer(word, layers.emplace_back())) return false;
  }
  return *end == '\0' && index >= 0 && index <= 0xFFF && !layers.empty() &&
         strip.cells.emplace(static_cast<int>(index), layers).second;
}

// "#" begins a comment, indexes may be hexadecimal.
Strip ReadList(const std::string& path) {
  Strip strip;
  std::ifstream file(path);
  if (!file) strip.error = path + ":0: can't be read";
  std::string line;
  for (int number = 1; strip.error.empty() && std::getline(file, line); ++number)
    if (!ReadLine(std::istringstream(line.substr(0, line.find('#'))), strip))
      strip.error = path + ":" + std::to_string(number) + ": expected an unused index and a name";
  return strip;
}

// The smallest rectangle with everything that is not transparent.
QRect Content(const QImage& image) {
  QRect content;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (qAlpha(image.pixel(x, y)) != 0) content |= QRect(x, y, 1, 1);
  return content;
}

// Draws the theme's own bitmap if there is one of about the cell's size and its content fits. A
// bitmap made for the pixel grid is sharper than any scaled picture.
bool DrawBitmap(QPainter& painter, const Options& options, const std::string& name, QSize cell) {
  const int largest = std::max(cell.width(), cell.height());
  for (int side = largest; side >= std::min(cell.width(), cell.height()) - 2; --side) {
    const std::string folder = std::to_string(side) + "x" + std::to_string(side);
    const QImage image(QString::fromStdString(options.theme + "/" + folder + "/" + name + ".png"));
    if (image.size() != QSize(side, side)) continue;
    const QRect content = Content(image);
    if (content.width() > cell.width() || content.height() > cell.height()) continue;
    QPoint at((cell.width() - side) / 2, (cell.height() - side) / 2);
    at.setX(std::clamp(at.x(), -content.left(), cell.width() - content.left() - content.width()));
    at.setY(std::clamp(at.y(), -content.top(), cell.height() - content.top() - content.height()));
    painter.drawImage(at, image);
    return true;
  }
  return false;
}

// Draws a scalable picture as large as the cell allows. If a multiple of one half of its own grid
// nearly fills the cell, draws it at that size, since its lines then meet the pixels.
bool DrawScalable(QPainter& painter, const std::string& path, QSize cell) {
  QSvgRenderer renderer(QString::fromStdString(path));
  if (!renderer.isValid()) return false;
  const QSizeF own = renderer.viewBoxF().size();
  const double fit = std::min(cell.width() / own.width(), cell.height() / own.height());
  const double sharp = std::floor(fit * 2) / 2;
  const QSizeF size = own * (sharp >= 0.9 * fit ? sharp : fit);
  const QPointF at(std::floor((cell.width() - size.width()) / 2),
                   std::floor((cell.height() - size.height()) / 2));
  renderer.render(&painter, QRectF(at, size));
  return true;
}

bool DrawPicture(QPainter& painter, const Options& options, const std::string& name, QSize cell) {
  const bool own = name.size() > 4 && name.compare(name.size() - 4, 4, ".svg") == 0;
  if (own) {
    const QString folder = QFileInfo(QString::fromStdString(options.list)).path();
    return DrawScalable(painter, folder.toStdString() + "/" + name, cell);
  }
  return DrawBitmap(painter, options, name, cell) ||
         DrawScalable(painter, options.theme + "/scalable/" + name + ".svg", cell);
}

// Draws one layer into the cell whose corner is the painter's origin.
bool DrawLayer(QPainter& painter, const Options& options, const Layer& layer, int grid,
               QSize cell) {
  if (layer.side == 0) return DrawPicture(painter, options, layer.name, cell);
  const double unit = static_cast<double>(cell.width()) / grid;
  const int side = static_cast<int>(std::lround(layer.side * unit));
  const QPointF at(std::lround(layer.x * unit), std::lround(layer.y * unit));
  painter.translate(at);
  const bool drawn = DrawPicture(painter, options, layer.name, QSize(side, side));
  painter.translate(-at);
  return drawn;
}

// Answers the name of a layer that can't be drawn, or no value.
std::optional<std::string> DrawStrip(QImage& image, const Options& options, const Strip& strip,
                                     QSize cell) {
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  for (const auto& [index, layers] : strip.cells) {
    painter.resetTransform();
    painter.translate(index * cell.width(), 0);
    painter.setClipRect(QRect(QPoint(0, 0), cell));
    for (const Layer& layer : layers)
      if (!DrawLayer(painter, options, layer, strip.grid, cell)) return layer.name;
  }
  return std::nullopt;
}

int Fail(const std::string& text) {
  std::cerr << "make-strip: " << text << "\n";
  return 1;
}

int Run(const Options& options) {
  int width = 0, height = 0;
  char by = 0;
  std::istringstream size(options.size);
  if (!(size >> width >> by >> height) || by != 'x' || width < 1 || height < 1)
    return Fail("a size looks like 22x22");
  const Strip strip = ReadList(options.list);
  if (!strip.error.empty()) return Fail(strip.error);
  if (strip.cells.empty()) return Fail(options.list + ":0: no pictures");

  const QSize cell(static_cast<int>(std::lround(width * options.percent / 100.0)),
                   static_cast<int>(std::lround(height * options.percent / 100.0)));
  const int count = strip.cells.rbegin()->first + 1;
  QImage image(cell.width() * count, cell.height(), QImage::Format_ARGB32_Premultiplied);
  if (const auto missing = DrawStrip(image, options, strip, cell))
    return Fail(options.list + ": no picture named " + *missing);
  const QString output = QString::fromStdString(options.output);
  const bool isJpeg = output.endsWith(".jpg");
  if (!image.save(output, isJpeg ? "JPEG" : "PNG", isJpeg ? cJpegQuality : -1))
    return Fail("can't write " + options.output);
  return 0;
}

}  // namespace
}  // namespace zendry

int main(int argc, char** argv) {
  zendry::Options options;
  CLI::App app("Composes a strip of pictures from a list of icon names.");
  app.add_option("list", options.list, "List: an index and icon names or SVG files in each line")
      ->required();
  app.add_option("output", options.output, "PNG file to write")->required();
  app.add_option("--size", options.size, "Size of a picture, say 22x22")->required();
  app.add_option("--percent", options.percent, "How large the pictures are drawn, 100 for the size")
      ->check(CLI::Range(100, 800));
  app.add_option("--theme", options.theme, "Folder of the icon theme");
  CLI11_PARSE(app, argc, argv);
  return zendry::Run(options);
}
