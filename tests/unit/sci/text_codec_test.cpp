#include "TextCodec.h"

#include <gtest/gtest.h>

#include <random>

namespace mavro {
namespace {

struct CookieCase {
  const char* line;
  const char* name;
};

TEST(TextCodec, CodingCookie_EachShape_IsRead) {
  const CookieCase cases[] = {
      {"# -*- coding: utf-8 -*-", "utf-8"},
      {"// coding=UTF-8", "utf-8"},
      {"coding:\"latin-1\"", "latin-1"},
      {"coding=' koi8_r.x", "koi8_r.x"},
      {"coding:\t utf-8;", "utf-8"},
      {"coding: AZaz09@", "azaz09"},
      {"coding utf-8", ""},
      {"coding", ""},
      {"coding:", ""},
      {"coding:=utf-8", ""},
      {"encoding: utf-8-unix", "utf-8-unix"},
      {"codin: utf-8", ""},
      {"", ""},
      {"coding no coding: utf-8", ""},  // the first one counts
  };
  for (const CookieCase& row : cases) EXPECT_EQ(CodingCookie(row.line), row.name) << row.line;
}

struct DetectCase {
  std::string head;
  TextEncoding encoding;
};

TEST(TextCodec, DetectEncoding_MarksThenCookies) {
  const DetectCase cases[] = {
      {"", cPlainText},
      {"\xFE\xFF", cUtf16Big},
      {"\xFF\xFEx", cUtf16Little},
      {"\xEF\xBB\xBF// coding: utf-8", cUtf8Mark},
      {"\xEF\xBB", cPlainText},
      {"\xFE", cPlainText},
      {"coding: utf-8", cUtf8Cookie},
      {"\ncoding: utf-8\n", cUtf8Cookie},
      {"\r\ncoding: utf-8\r\n", cUtf8Cookie},
      {"\rcoding: utf-8", cUtf8Cookie},
      {"\n\ncoding: utf-8", cPlainText},
      {"\r\n\r\ncoding: utf-8", cPlainText},
      {"coding: latin-1\ncoding: utf-8", cUtf8Cookie},
      {"coding: latin-1", cPlainText},
  };
  for (const DetectCase& row : cases) EXPECT_EQ(DetectEncoding(row.head), row.encoding) << row.head;
}

std::string Decode(const std::string& bytes, TextEncoding encoding, size_t chunk,
                   std::string& oddByte) {
  TextDecoder decoder(encoding);
  std::string text;
  // The first chunk holds the mark, as it does in a file.
  for (size_t at = 0; at < bytes.size();) {
    const size_t length = std::min(at == 0 ? std::max<size_t>(chunk, 3) : chunk, bytes.size() - at);
    text += decoder.Decode(std::string_view(bytes).substr(at, length));
    at += length;
  }
  text += decoder.Finish();
  oddByte = decoder.oddByte;
  return text;
}

TEST(TextCodec, Decode_InChunksOfAnySize_IsTheSameAndComesBack) {
  std::mt19937 random(3);
  for (const TextEncoding encoding : {cUtf16Big, cUtf16Little, cUtf8Mark, cPlainText})
    for (int round = 0; round < 300; ++round) {
      std::string bytes(ByteOrderMark(encoding));
      for (unsigned n = random() % 40; n > 0; --n)
        bytes += static_cast<char>(random() % 4 ? random() % 256 : 0xD8 + random() % 8);
      std::string odd;
      const std::string text = Decode(bytes, encoding, 1000, odd);
      for (const size_t chunk : {1u, 2u, 3u, 7u}) {
        std::string oddInChunks;
        EXPECT_EQ(Decode(bytes, encoding, chunk, oddInChunks), text);
        EXPECT_EQ(oddInChunks, odd);
      }
      EXPECT_EQ(EncodeText(text, encoding, odd), bytes);
    }
}

TEST(TextCodec, Encode_WhatUtf16HasNoPlaceFor_IsRefused) {
  const std::string bad[] = {
      "\xFF", "\xC3",  "\xC3x", "\xE4\xB8", "\xC0\x80", "\xF8\x88\x80\x80\x80", "\xF4\x90\x80\x80",
      "\x80", "ok\xED"};
  for (const std::string& text : bad) {
    EXPECT_EQ(EncodeText(text, cUtf16Big), std::nullopt) << text;
    EXPECT_NE(EncodeText(text, cUtf8Mark), std::nullopt) << text;
  }
}

TEST(TextCodec, Encode_EachEncoding_HasItsMark) {
  EXPECT_EQ(EncodeText("a", cPlainText), "a");
  EXPECT_EQ(EncodeText("a", cUtf8Cookie), "a");
  EXPECT_EQ(EncodeText("a", cUtf8Mark),
            "\xEF\xBB\xBF"
            "a");
  EXPECT_EQ(EncodeText("a", cUtf16Big), std::string("\xFE\xFF\0a", 4));
  EXPECT_EQ(EncodeText("a", cUtf16Little), std::string("\xFF\xFE"
                                                       "a\0",
                                                       4));
}

struct BytesCase {
  std::string text;
  TextBytes kind;
};

TEST(TextCodec, ClassifyBytes_Kinds) {
  const BytesCase cases[] = {
      {"", TextBytes::cAscii},
      {"plain text of more than eight bytes", TextBytes::cAscii},
      {std::string("a\0b", 3), TextBytes::cAscii},
      {"\xC3\xA4", TextBytes::cUtf8},
      {"12345678\xF0\x9F\x98\x80 and on", TextBytes::cUtf8},
      {"1234567\xE4", TextBytes::cOther},
      {"\xC3", TextBytes::cOther},
      {"\xED\xA0\x80", TextBytes::cOther},  // a surrogate
      {"\xC0\xAF", TextBytes::cOther},      // longer than it need be
      {"\xF5\x80\x80\x80", TextBytes::cOther},
      {"12345678901234567890\x80", TextBytes::cOther},
  };
  for (const BytesCase& row : cases) EXPECT_EQ(ClassifyBytes(row.text), row.kind) << row.text;
}

TEST(TextCodec, FirstLineEnding_DecidesAboutTheRest) {
  EXPECT_EQ(FirstLineEnding("a\r\nb\n"), LineEnding::cCrLf);
  EXPECT_EQ(FirstLineEnding("a\nb\r\n"), LineEnding::cLf);
  EXPECT_EQ(FirstLineEnding("a\rb\n"), LineEnding::cCr);
  EXPECT_EQ(FirstLineEnding("a\r"), LineEnding::cCr);
  EXPECT_EQ(FirstLineEnding("a"), LineEnding::cLf);
  EXPECT_EQ(FirstLineEnding(""), LineEnding::cLf);
}

TEST(TextCodec, TrailingBlanks_BeforeLineEndsAndTheTextsEnd) {
  EXPECT_EQ(TrailingBlanks("a \nb\t \r\nc"), (std::vector<ByteRange>{{1, 2}, {4, 6}}));
  EXPECT_EQ(TrailingBlanks("  "), (std::vector<ByteRange>{{0, 2}}));
  EXPECT_EQ(TrailingBlanks(" a b"), std::vector<ByteRange>());
  EXPECT_EQ(TrailingBlanks("a \r b"), (std::vector<ByteRange>{{1, 2}}));
  EXPECT_EQ(TrailingBlanks(""), std::vector<ByteRange>());
}

TEST(TextCodec, TrailingBlanks_LineBreaksKept_TwoBlanksAfterAWordStay) {
  const auto kept = [](std::string_view text) { return TrailingBlanks(text, LineBreaks::cKept); };
  EXPECT_EQ(kept("a  \nb  "), std::vector<ByteRange>());
  EXPECT_EQ(kept("a \n"), (std::vector<ByteRange>{{1, 2}}));
  EXPECT_EQ(kept("a   \n"), (std::vector<ByteRange>{{3, 4}}));
  EXPECT_EQ(kept("a \t \n"), (std::vector<ByteRange>{{1, 4}}));
  EXPECT_EQ(kept("a\n  \n\r  "), (std::vector<ByteRange>{{2, 4}, {6, 8}}));
  EXPECT_EQ(kept("  "), (std::vector<ByteRange>{{0, 2}}));
}

TEST(TextCodec, HasOtherLineEnds_OneIsEnough) {
  EXPECT_FALSE(HasOtherLineEnds("", LineEnding::cLf));
  EXPECT_FALSE(HasOtherLineEnds("a", LineEnding::cCr));
  EXPECT_FALSE(HasOtherLineEnds("a\nb\n", LineEnding::cLf));
  EXPECT_FALSE(HasOtherLineEnds("a\r\n\r\n", LineEnding::cCrLf));
  EXPECT_FALSE(HasOtherLineEnds("\r\rb", LineEnding::cCr));
  EXPECT_TRUE(HasOtherLineEnds("a\nb\r\n", LineEnding::cLf));
  EXPECT_TRUE(HasOtherLineEnds("a\r\nb\n", LineEnding::cCrLf));
  EXPECT_TRUE(HasOtherLineEnds("\r\r\n", LineEnding::cCr));
  EXPECT_TRUE(HasOtherLineEnds("\r", LineEnding::cLf));
}

TEST(TextCodec, ByteLetters_EveryByte_ComesBack) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
  const std::string text = TextOfByteLetters(bytes);
  EXPECT_EQ(ClassifyBytes(text), TextBytes::cUtf8);
  EXPECT_EQ(EncodeText(text, cByteLetters), bytes);
}

TEST(TextCodec, ByteLetters_LettersOfNoByte_AreRefused) {
  EXPECT_EQ(EncodeText("\u00FF", cByteLetters), "\xFF");
  EXPECT_EQ(EncodeText("\u0100", cByteLetters), std::nullopt);
  EXPECT_EQ(EncodeText("\xFF", cByteLetters), std::nullopt);
}

}  // namespace
}  // namespace mavro
