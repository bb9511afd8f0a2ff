#include "TextRescue.h"

#include <algorithm>

namespace zendry {

namespace {

const RescueCopies cCopies("text");
int lastNumber = 0;

// The open files, in the order opened.
std::vector<TextRescue*>& OpenTexts() {
  static std::vector<TextRescue*> texts;
  return texts;
}

}  // namespace

TextRescue::TextRescue(const RescueSource& newSource) : source(newSource), number(++lastNumber) {
  OpenTexts().push_back(this);
}

TextRescue::~TextRescue() {
  Drop();
  std::erase(OpenTexts(), this);
}

void TextRescue::Changed(int bytes, Clock::time_point now) {
  if (bytesBehind == 0) behindSince = now;
  bytesBehind += std::min(bytes, cMostBytesBehind);
  if (bytesBehind >= cMostBytesBehind) KeepNow();
}

void TextRescue::Tick(Clock::time_point now) {
  if (bytesBehind > 0 && now - behindSince >= cLongestBehind) KeepNow();
}

bool TextRescue::KeepNow() {
  if (bytesBehind == 0) return true;
  const bool isKept = cCopies.Keep(number, source.RescuePath(), source.RescueContent());
  bytesBehind = isKept ? 0 : 1;
  return isKept;
}

void TextRescue::Drop() {
  bytesBehind = 0;
  cCopies.Drop(number);
}

void TextRescue::KeepAll() {
  for (TextRescue* text : OpenTexts()) text->KeepNow();
}

std::vector<RescueCopy> FindRescuedTexts() {
  return cCopies.OfTheDead();
}

}  // namespace zendry
