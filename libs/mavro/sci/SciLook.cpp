#include <algorithm>
#include <string>

#include "SciImages.h"
#include "SciImpl.h"
#include "StylePalette.h"

// The configuration of an editor. ApplyOptions sends everything, in the order that the component
// needs. The settings that depend on the palette are sent again when the desktop changes it.

namespace mavro {

namespace {

constexpr Param cPlainLexer = 1;
constexpr int cListRows = 12;
constexpr int cDwellMilliseconds = 500;
constexpr int cBookmarkMarker = 1;
constexpr int cBookmarkWidth = 16;
constexpr int cFoldWidth = 20;
constexpr Param cFolderMask = static_cast<Param>(0xFE000000);
constexpr int cLineBelowClosed = 0x10;
constexpr int cLineAboveOpen = 0x103;
constexpr int cLinesAboveCaret = 2;
constexpr int cEdgeLine = 1;
constexpr int cBlankSize = 2;
constexpr int cPageCache = 2;
enum Margin { cNumberMargin, cBookmarkMargin, cFoldMargin };

// Symbols of the fold markers, in the order of cFoldMarkers.
constexpr int cFoldMarkers[] = {31, 30, 29, 28, 25, 26, 27};
constexpr int cFoldSymbols[][std::size(cFoldMarkers)] = {
    {7, 8, 5, 5, 5, 5, 5},
    {6, 2, 5, 5, 5, 5, 5},
    {20, 18, 9, 16, 19, 21, 17},
    {14, 12, 9, 10, 13, 15, 11},
};

// Characters that are invisible, or that change the direction of the text after them: drawn as
// boxes.
struct Hidden {
  const char* bytes;
  const char* shown;
};
constexpr Hidden cHiddenUtf8[] = {
    {"\u00A0", "NBSP"}, {"\u00AD", "SHY"}, {"\u034F", "CGJ"},  {"\u061C", "ALM"},
    {"\u115F", "HCF"},  {"\u1160", "HJF"}, {"\u180E", "MVS"},  {"\u200B", "ZWSP"},
    {"\u200C", "ZWNJ"}, {"\u200D", "ZWJ"}, {"\u200E", "LRM"},  {"\u200F", "RLM"},
    {"\u2028", "LS"},   {"\u2029", "PS"},  {"\u202A", "LRE"},  {"\u202B", "RLE"},
    {"\u202C", "PDF"},  {"\u202D", "LRO"}, {"\u202E", "RLO"},  {"\u2060", "WJ"},
    {"\u2061", "FA"},   {"\u2062", "IT"},  {"\u2063", "IS"},   {"\u2064", "IP"},
    {"\u2066", "LRI"},  {"\u2067", "RLI"}, {"\u2068", "FSI"},  {"\u2069", "PDI"},
    {"\u3164", "HF"},   {"\uFEFF", "BOM"}, {"\uFFA0", "HWHF"}, {"\uFFF9", "IAA"},
    {"\uFFFA", "IAS"},  {"\uFFFB", "IAT"},
};
constexpr Hidden cHiddenBytes[] = {{"\xA0", "NBSP"}, {"\xAD", "SHY"}};

const char* SignImage(MarkSign sign) {
  switch (sign) {
    case MarkSign::cArrow:
      return cArrowImage;
    case MarkSign::cDisc:
      return cDiscImage;
    case MarkSign::cRing:
      return cRingImage;
    default:
      return cErrorImage;
  }
}

Param AsParam(const char* text) {
  return reinterpret_cast<Param>(text ? text : "");
}

}  // namespace

void SciEditor::Impl::ApplyOptions() {
  if (!hwnd) return;
  ApplyLexer();
  SetCodePage(Editor().codePage);
  ApplyLayout();
  ApplyCompletion();
  ApplyMargins();
  ApplyFoldSymbols();
  ApplyProperties();
  ApplyStyles();
}

void SciEditor::Impl::ApplyLexer() {
  const EditorLanguage* language = Editor().language;
  if (language && language->name && !huge)
    SendText(SCI_SETLEXERLANGUAGE, 0, language->name);
  else
    Send(SCI_SETLEXER, cPlainLexer);
  Send(SCI_SETSTYLEBITS, Send(SCI_GETSTYLEBITSNEEDED));
  if (!language) return;
  const auto keywords = [this](int set, const char* words) {
    if (words) SendText(SCI_SETKEYWORDS, set, words);
  };
  keywords(0, language->keywords);
  keywords(1, language->keywords2);
  for (int i = 0; i < EditorLanguage::cFurtherKeywords; ++i)
    keywords(i + 2, language->furtherKeywords[i]);
}

void SciEditor::Impl::ApplyLayout() {
  const EditorOptions& options = *Editor().options;
  Send(SCI_SETTABWIDTH, options.tabWidth);
  Send(SCI_SETINDENT, options.indentSize);
  Send(SCI_SETUSETABS, options.useTabs);
  Send(SCI_SETYCARETPOLICY, CARET_SLOP | CARET_STRICT | CARET_EVEN, cLinesAboveCaret);
  Send(SCI_SETSCROLLWIDTH, 1);
  Send(SCI_SETSCROLLWIDTHTRACKING, 1);
  Send(SCI_SETMULTIPLESELECTION, 1);
  Send(SCI_SETADDITIONALSELECTIONTYPING, 1);
  Send(SCI_SETMULTIPASTE, SC_MULTIPASTE_EACH);
  Send(SCI_SETVIRTUALSPACEOPTIONS, SCVS_RECTANGULARSELECTION);
  Send(SCI_SETLAYOUTCACHE, cPageCache);
  Send(SCI_SETIDLESTYLING, SC_IDLESTYLING_TOVISIBLE);
  ApplyView();
  Send(SCI_SETEDGECOLUMN, options.edgeColumn);
  Send(SCI_SETEDGEMODE, options.edgeColumn > 0 ? cEdgeLine : 0);
}

// A wrapped line goes on below its first letter.
void SciEditor::Impl::ApplyView() {
  const EditorOptions& options = *Editor().options;
  Send(SCI_SETWRAPMODE, options.wrapLines && !huge ? SC_WRAP_WORD : SC_WRAP_NONE);
  Send(SCI_SETWRAPINDENTMODE, SC_WRAPINDENT_SAME);
  Send(SCI_SETWRAPVISUALFLAGS, SC_WRAPVISUALFLAG_END);
  Send(SCI_SETVIEWWS, options.showWhiteSpace ? SCWS_VISIBLEALWAYS : SCWS_INVISIBLE);
  Send(SCI_SETVIEWEOL, options.showLineEnds);
}

void SciEditor::Impl::ApplyToggles() {
  if (!hwnd) return;
  ApplyView();
  ApplyStyles();
}

void SciEditor::Impl::ApplyCompletion() {
  if (const EditorLanguage* language = Editor().language) {
    Send(SCI_AUTOCSTOPS, 0, AsParam(language->wordEndChars));
    Send(SCI_AUTOCSETFILLUPS, 0, AsParam(language->fillUps));
    Send(SCI_AUTOCSETIGNORECASE, language->ignoreCase);
    Send(SCI_AUTOCSETCANCELATSTART, language->cancelAtStart);
    Send(SCI_AUTOCSETDROPRESTOFWORD, language->dropRestOfWord);
  }
  Send(SCI_AUTOCSETMAXHEIGHT, cListRows);
  for (int number = 1; number <= cListPictures; ++number)
    Window()->SendImage(SCI_REGISTERIMAGE, number, ListPicture(number).c_str());
  Send(SCI_SETMOUSEDWELLTIME, cDwellMilliseconds);
}

void SciEditor::Impl::ApplyMargins() {
  const EditorOptions& options = *Editor().options;
  Send(SCI_SETMARGINTYPEN, cNumberMargin, SC_MARGIN_NUMBER);
  Send(SCI_SETMARGINTYPEN, cBookmarkMargin, SC_MARGIN_SYMBOL);
  Send(SCI_SETMARGINMASKN, cBookmarkMargin, ~cFolderMask & 0xFFFFFFFF);
  Send(SCI_SETMARGINWIDTHN, cBookmarkMargin, options.bookmarkMargin ? cBookmarkWidth : 0);
  Send(SCI_SETMARGINSENSITIVEN, cBookmarkMargin, options.marginClicks);
  Send(SCI_SETMARGINTYPEN, cFoldMargin, SC_MARGIN_SYMBOL);
  Send(SCI_SETMARGINMASKN, cFoldMargin, cFolderMask);
  Send(SCI_SETMARGINSENSITIVEN, cFoldMargin, 1);
  Send(SCI_SETMARGINWIDTHN, cFoldMargin, options.foldMargin && !huge ? cFoldWidth : 0);
}

// Makes the margin as wide as the numbers of this text at its zoom.
void SciEditor::Impl::ApplyLineNumbers() {
  const EditorOptions& options = *Editor().options;
  if (!options.lineNumbers) {
    Send(SCI_SETMARGINWIDTHN, cNumberMargin, 0);
    return;
  }
  Param lines = Send(SCI_GETLINECOUNT);
  if (const Param length = Length(); firstPart.expectedLength > length && length > 0)
    lines = static_cast<Param>(static_cast<double>(lines) *
                               static_cast<double>(firstPart.expectedLength) /
                               static_cast<double>(length));
  const std::string widest = "_" + std::to_string(lines);
  const Param needed = SendText(SCI_TEXTWIDTH, STYLE_LINENUMBER, widest.c_str());
  const Param width = std::max<Param>(needed, options.lineNumberWidth);
  if (Send(SCI_GETMARGINWIDTHN, cNumberMargin) != width)
    Send(SCI_SETMARGINWIDTHN, cNumberMargin, width);
}

void SciEditor::Impl::ApplyFoldSymbols() {
  const bool isAbove = Editor().options->lineAboveOpenFolds;
  foldFlags = isAbove ? cLineAboveOpen : cLineBelowClosed;
  Send(SCI_SETFOLDFLAGS, foldFlags);
  const int style = std::clamp(Editor().options->foldStyle, 0, 3);
  for (size_t i = 0; i < std::size(cFoldMarkers); ++i)
    Send(SCI_MARKERDEFINE, cFoldMarkers[i], cFoldSymbols[style][i]);
}

void SciEditor::Impl::ApplyMarkers() {
  const bool hasMargin = Editor().options->bookmarkMargin;
  Send(SCI_MARKERSETFORE, cBookmarkMarker, 0x7F0000);
  Send(SCI_MARKERSETBACK, cBookmarkMarker, Colour(cPlaceGround));
  if (hasMargin)
    Window()->SendImage(SCI_MARKERDEFINEPIXMAP, cBookmarkMarker, cBookmarkImage);
  else
    Send(SCI_MARKERDEFINE, cBookmarkMarker, SC_MARK_BACKGROUND);
  for (int i = 0; i < Editor().markTypeCount; ++i) {
    const MarkType& type = Editor().markTypes[i];
    if (!type.enabled) continue;
    if (type.hasGround) {
      Send(SCI_MARKERDEFINE, type.number, SC_MARK_BACKGROUND);
      Send(SCI_MARKERSETBACK, type.number, GroundOf(type.ground, ItsDesktop()));
    }
    // A marker without a margin would colour the ground of its line.
    if (hasMargin && type.sign != MarkSign::cNone)
      Window()->SendImage(SCI_MARKERDEFINEPIXMAP, SignOf(type.number), SignImage(type.sign));
    else
      Send(SCI_MARKERDEFINE, SignOf(type.number), SC_MARK_EMPTY);
  }
}

void SciEditor::Impl::ApplyProperties() {
  const EditorOptions& options = *Editor().options;
  const auto send = [this](const char* name, const std::string& value) {
    Send(SCI_SETPROPERTY, reinterpret_cast<Param>(name), reinterpret_cast<Param>(value.c_str()));
  };
  send("fold", options.foldMargin && !huge ? "1" : "0");
  send("fold.compact", "0");
  send("fold.flags", std::to_string(foldFlags));
  send("fold.symbols", std::to_string(options.foldStyle));
  send("fold.comment", options.foldComment ? "1" : "0");
  send("fold.preprocessor", options.foldPreprocessor ? "1" : "0");
}

Desktop SciEditor::Impl::ItsDesktop() const {
  return Window()->IsDark() ? Desktop::cDark : Desktop::cLight;
}

void SciEditor::Impl::ApplyStyles() {
  if (!hwnd) return;
  ApplyMarkers();
  const EditorOptions& options = *Editor().options;
  const std::string face =
      options.fontFace.empty() ? Window()->DefaultFace(FaceKind::cProportional) : options.fontFace;
  Send(SCI_STYLERESETDEFAULT);
  SendText(SCI_STYLESETFONT, STYLE_DEFAULT, face.c_str());
  Send(SCI_STYLESETSIZE, STYLE_DEFAULT, options.fontSize);
  Send(SCI_STYLESETBOLD, STYLE_DEFAULT, (options.fontStyle & Font::cBold) != 0);
  Send(SCI_STYLESETITALIC, STYLE_DEFAULT, (options.fontStyle & Font::cItalic) != 0);
  SendStyle({STYLE_DEFAULT, ColourOf(cTextInk), 0, ColourOf(cTextGround)});
  Send(SCI_STYLECLEARALL);
  ApplyTextStyles();
  for (const StyleRow* row = cCommonStyles; row->style < StyleRow::cEnd; ++row) SendStyle(*row);
  if (options.monospaced) {
    const std::string fixed =
        options.monoFace.empty() ? Window()->DefaultFace(FaceKind::cFixed) : options.monoFace;
    for (int style = 0; style <= STYLE_MAX; ++style) {
      if (style == STYLE_LINENUMBER) continue;
      SendText(SCI_STYLESETFONT, style, fixed.c_str());
      Send(SCI_STYLESETSIZE, style, options.fontSize);
    }
  }
  ApplyColours();
  ApplyLineNumbers();
}

// Text that the preprocessor leaves out has the look of other text, on a ground of its own: the
// component knows only the macros of this one file, and is often wrong.
void SciEditor::Impl::ApplyTextStyles() {
  const EditorLanguage* language = Editor().language;
  if (!language || !language->styles) return;
  const auto sendLeftOut = [&](StyleRow row) {
    row.style += language->leftOutStyles;
    row.flags |= StyleRow::cEolFilled;
    row.background = ColourOf(cLeftOutGround);
    SendStyle(row);
  };
  for (int style = 0; style < language->leftOutStyles; ++style)
    sendLeftOut({style, ColourOf(cTextInk)});
  for (const StyleRow* row = language->styles; row->style < StyleRow::cEnd; ++row) {
    SendStyle(*row);
    if (language->leftOutStyles > 0) sendLeftOut(*row);
  }
}

void SciEditor::Impl::SendStyle(const StyleRow& row) {
  int ground = Colour(cTextGround);
  const int style = Editor().options->fontStyle;
  Send(SCI_STYLESETITALIC, row.style, (row.flags & StyleRow::cItalic) || (style & Font::cItalic));
  Send(SCI_STYLESETBOLD, row.style, (row.flags & StyleRow::cBold) || (style & Font::cBold));
  if (row.background.light != 0) {
    ground = GroundOf(row.background, ItsDesktop());
    Send(SCI_STYLESETBACK, row.style, ground);
    Send(SCI_STYLESETEOLFILLED, row.style, (row.flags & StyleRow::cEolFilled) != 0);
  }
  Send(SCI_STYLESETFORE, row.style, InkOf(row.foreground, ItsDesktop(), ground));
  if (row.flags & 0xFF) Send(SCI_STYLESETSIZE, row.style, row.flags & 0xFF);
}

void SciEditor::Impl::ApplyColours() {
  Send(SCI_SETCARETFORE, Colour(cTextInk));
  Send(SCI_SETCARETLINEBACK, Colour(cCaretLineGround));
  ShowCaretLine();
  Send(SCI_SETSELBACK, 1, Colour(cSelectionGround));
  Send(SCI_SETADDITIONALSELBACK, Colour(cSelectionGround));
  Send(SCI_SETADDITIONALCARETFORE, Colour(cTextInk));
  Send(SCI_SETFOLDMARGINCOLOUR, 1, Colour(cMarginGround));
  Send(SCI_SETFOLDMARGINHICOLOUR, 1, Colour(cMarginGround));
  for (const int marker : cFoldMarkers) {
    Send(SCI_MARKERSETFORE, marker, Colour(cMarginGround));
    Send(SCI_MARKERSETBACK, marker, Colour(cFoldLine));
  }
  Send(SCI_CALLTIPSETBACK, Colour(cTipGround));
  Send(SCI_CALLTIPSETFORE, Colour(cTipInk));
  Send(SCI_CALLTIPSETFOREHLT, Colour(cTipArgumentInk));
  Send(SCI_SETEDGECOLOUR, Colour(cGuideLine));
  Send(SCI_INDICSETFORE, cHitIndicator, Colour(cFoundGround));
  Send(SCI_SETWHITESPACEFORE, 1, Colour(cBlankSign));
  Send(SCI_SETWHITESPACESIZE, cBlankSize);
  constexpr Param cOpaque = 255;
  Send(SCI_INDICSETSTYLE, cHitIndicator, INDIC_STRAIGHTBOX);
  Send(SCI_INDICSETALPHA, cHitIndicator, cOpaque);
  Send(SCI_INDICSETUNDER, cHitIndicator, 1);
}

void SciEditor::Impl::ShowCaretLine() {
  unsigned marks = 0;
  for (int i = 0; i < Editor().markTypeCount; ++i)
    if (Editor().markTypes[i].enabled) marks |= 1u << Editor().markTypes[i].number;
  const auto here = static_cast<unsigned>(Send(SCI_MARKERGET, Editor().CaretLine()));
  const bool isShown = Editor().options->caretLine && (here & marks) == 0;
  if (Send(SCI_GETCARETLINEVISIBLE) != isShown) Send(SCI_SETCARETLINEVISIBLE, isShown);
}

// Drops the index that screen readers ask for: it fits only one code page.
void SciEditor::Impl::DropLineIndex() {
  if (Send(SCI_GETLINECHARACTERINDEX) & SC_LINECHARACTERINDEX_UTF16)
    Send(SCI_RELEASELINECHARACTERINDEX, SC_LINECHARACTERINDEX_UTF16);
}

void SciEditor::Impl::SetCodePage(int codePage) {
  Editor().codePage = codePage;
  if (Send(SCI_GETCODEPAGE) != codePage) DropLineIndex();
  Send(SCI_SETCODEPAGE, codePage);
  ApplyRepresentations();
}

// The component forgets the representations when the code page changes.
void SciEditor::Impl::ApplyRepresentations() {
  const auto send = [this](const Hidden& hidden) {
    Send(SCI_SETREPRESENTATION, reinterpret_cast<Param>(hidden.bytes),
         reinterpret_cast<Param>(hidden.shown));
  };
  if (Editor().codePage == SC_CP_UTF8)
    std::for_each(std::begin(cHiddenUtf8), std::end(cHiddenUtf8), send);
  else
    std::for_each(std::begin(cHiddenBytes), std::end(cHiddenBytes), send);
  notesSent = 0;
  SendNotes();
}

}  // namespace mavro
