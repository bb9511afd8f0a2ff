#include "QtText.h"

namespace mavro {

namespace {

constexpr char16_t cKeptByte = 0xDC00;

// Length of the valid UTF-8 sequence that starts at `p`, 0 if there is none. Overlong forms,
// surrogates and code points above U+10FFFF are not valid.
int SequenceLength(const unsigned char* p, const unsigned char* end) {
  const auto follows = [&](int i) { return p + i < end && (p[i] & 0xC0) == 0x80; };
  if (*p < 0x80) return 1;
  if (*p >= 0xC2 && *p <= 0xDF) return follows(1) ? 2 : 0;
  if (*p >= 0xE0 && *p <= 0xEF) {
    if (!follows(1) || !follows(2)) return 0;
    if (*p == 0xE0 && p[1] < 0xA0) return 0;
    if (*p == 0xED && p[1] > 0x9F) return 0;
    return 3;
  }
  if (*p >= 0xF0 && *p <= 0xF4) {
    if (!follows(1) || !follows(2) || !follows(3)) return 0;
    if (*p == 0xF0 && p[1] < 0x90) return 0;
    if (*p == 0xF4 && p[1] > 0x8F) return 0;
    return 4;
  }
  return 0;
}

}  // namespace

QString ToScreen(std::string_view bytes) {
  const auto* p = reinterpret_cast<const unsigned char*>(bytes.data());
  const auto* end = p + bytes.size();
  QString shown;
  shown.reserve(static_cast<qsizetype>(bytes.size()));
  while (p < end) {
    const unsigned char* start = p;
    int length = 0;
    while (p < end && (length = SequenceLength(p, end)) > 0) p += length;
    shown += QString::fromUtf8(reinterpret_cast<const char*>(start), p - start);
    if (p < end) shown += QChar(static_cast<char16_t>(cKeptByte + *p++));
  }
  return shown;
}

std::string FromScreen(const QString& shown) {
  std::string bytes;
  bytes.reserve(static_cast<size_t>(shown.size()));
  qsizetype start = 0;
  for (qsizetype i = 0; i <= shown.size(); ++i) {
    const bool atEnd = i == shown.size();
    const char16_t unit = atEnd ? 0 : shown[i].unicode();
    const bool kept = !atEnd && unit >= cKeptByte + 0x80 && unit <= cKeptByte + 0xFF &&
                      (i == 0 || !shown[i - 1].isHighSurrogate());
    if (!kept && !atEnd) continue;
    const QByteArray part = QStringView(shown).mid(start, i - start).toUtf8();
    bytes.append(part.constData(), static_cast<size_t>(part.size()));
    if (kept) bytes += static_cast<char>(unit - cKeptByte);
    start = i + 1;
  }
  return bytes;
}

}  // namespace mavro
