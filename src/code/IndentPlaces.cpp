#include "code/IndentScan.h"

// Where a line belongs, from what is open before it and its first piece.

namespace zendry {

namespace {

using PieceKind = CppPiece::Kind;

struct LevelRow {
  std::string_view sign;
  int level;
};

// Binary operators, by how tightly they bind.
constexpr LevelRow cOperators[] = {
    {"=", 0},  {"+=", 0},  {"-=", 0}, {"*=", 0}, {"/=", 0}, {"%=", 0}, {"&=", 0}, {"|=", 0},
    {"^=", 0}, {"<<=", 0}, {"?", 1},  {":", 1},  {"||", 2}, {"or", 2}, {"&&", 3}, {"and", 3},
    {"|", 4},  {"^", 5},   {"&", 6},  {"==", 7}, {"!=", 7}, {"<", 7},  {">", 7},  {"<=", 7},
    {">=", 7}, {"<=>", 7}, {"<<", 8}, {"+", 9},  {"-", 9},  {"*", 10}, {"/", 10}, {"%", 10}};

bool IsWordOrNothing(const CppPiece& piece) {
  return piece.kind == PieceKind::cWord || piece.kind == PieceKind::cEnd || piece.text == "~";
}

}  // namespace

IndentPlace IndentScan::PlaceOf(const CppPiece& piece) {
  const Frame& frame = Top();
  if (frame.kind == Kind::cParen) return PlaceInParen(piece);
  if (piece.text == "}") return PlaceOfClosing();
  if (!frame.isOpen || EndsAsMacro(piece)) return PlaceOfStatement(piece);
  return PlaceOfRest(piece);
}

IndentPlace IndentScan::PlaceOfClosing() {
  return {IndentHabit::cSame, Top().base};
}

IndentPlace IndentScan::PlaceOfStatement(const CppPiece& piece) {
  const Frame& frame = Top();
  const std::string_view word = piece.text;
  const auto ownerOf = [&frame](Control control) {
    for (auto at = frame.owners.rbegin(); at != frame.owners.rend(); ++at)
      if (at->control == control) return at->column;
    return -1;
  };
  int owner = -1;
  if (frame.isEnded && word == "else") owner = ownerOf(Control::cIf);
  if (frame.isEnded && word == "while") owner = ownerOf(Control::cDo);
  if (frame.isEnded && word == "catch") owner = ownerOf(Control::cTry);
  if (owner >= 0) return {IndentHabit::cSame, owner};
  if (!frame.isEnded && !frame.owners.empty() && !frame.isOpen) {
    const int column = frame.owners.back().column;
    return {word == "{" ? IndentHabit::cBraceControl : IndentHabit::cSub, column};
  }
  if (IsLabel(piece)) return PlaceOfLabel(word);
  if (frame.kind == Kind::cInit && frame.after >= 0) return {IndentHabit::cSame, frame.after};
  const bool endsCase = frame.label >= 0 && frame.hasJumped && piece.kind == PieceKind::cDirective;
  if (endsCase) return {IndentHabit::cSame, frame.label};
  if (frame.inner >= 0) return {IndentHabit::cSame, frame.inner};
  if (frame.label >= 0)
    return {word == "{" ? IndentHabit::cBraceCase : IndentHabit::cCaseBody, frame.label};
  switch (frame.kind) {
    case Kind::cFile:
      return {IndentHabit::cSame, 0};
    case Kind::cNamespace:
      return {IndentHabit::cNamespace, frame.base};
    case Kind::cClass:
      return {IndentHabit::cClass, frame.base};
    case Kind::cEnum:
      return {IndentHabit::cEnum, frame.base};
    case Kind::cInit:
      return {IndentHabit::cInit, frame.base};
    default:
      return {IndentHabit::cBlock, frame.base};
  }
}

IndentPlace IndentScan::PlaceOfLabel(std::string_view word) {
  const Frame& frame = Top();
  if (word == "case" || word == "default") {
    if (frame.label >= 0) return {IndentHabit::cSame, frame.label};
    return {IndentHabit::cCase, frame.base};
  }
  return {frame.kind == Kind::cBlock ? IndentHabit::cLabel : IndentHabit::cAccess, frame.base};
}

// A line in the middle of a statement.
IndentPlace IndentScan::PlaceOfRest(const CppPiece& piece) {
  const Frame& frame = Top();
  const std::string_view sign = piece.text;
  if (sign == "{") return {IndentHabit::cBraceOther, frame.column};
  const bool isColon = sign == ":" && frame.expression.question < 0;
  if (isColon && (frame.hasParens || frame.isClass)) return {IndentHabit::cColon, frame.column};
  if (frame.inMembers) {
    if (sign == "," && frame.colon >= 0) return {IndentHabit::cSame, frame.colon};
    if (before.text == "," && frame.member >= 0) return {IndentHabit::cSame, frame.member};
    if (before.text == ":" || before.text == ",") return {IndentHabit::cContinuation, frame.column};
  }
  if (frame.isTemplate && before.text == ">") return {IndentHabit::cSame, frame.column};
  const bool isOutside = frame.kind != Kind::cBlock && frame.kind != Kind::cInit;
  const bool followsType = before.kind == PieceKind::cWord || before.text == "*" ||
                           before.text == "&" || before.text == ">" || before.text == "]";
  if (isOutside && before.text == ")" && frame.isAttribute && IsWordOrNothing(piece))
    return {IndentHabit::cHead, frame.column};
  if (isOutside && !frame.hasAssign && !frame.hasParens && followsType && IsWordOrNothing(piece))
    return {IndentHabit::cHead, frame.column};
  return PlaceOfOperand(piece, {IndentHabit::cContinuation, frame.column});
}

IndentPlace IndentScan::PlaceInParen(const CppPiece& piece) {
  const Frame& frame = Top();
  if (piece.text == ")" || piece.text == "]") return {IndentHabit::cSame, frame.base};
  IndentPlace place{IndentHabit::cParen, frame.base};
  if (frame.inner >= 0) place = {IndentHabit::cSame, frame.inner};
  if (frame.after >= 0) place = {IndentHabit::cContinuation, frame.base, frame.after};
  if (piece.text == "{" && frame.lambdaComes) return {IndentHabit::cBraceOther, StatementColumn()};
  const bool isNew = frame.isEmpty || before.text == "," || before.text == ";";
  return isNew ? place : PlaceOfOperand(piece, place);
}

// Where the statement around the open parentheses begins.
int IndentScan::StatementColumn() const {
  for (size_t i = frames.size(); i-- > 0;)
    if (frames[i].kind != Kind::cParen) return frames[i].column;
  return 0;
}

int IndentScan::LevelOf(std::string_view sign) {
  constexpr std::string_view cFirst = "=+-*/%&|^<>!?:oa";
  if (sign.empty() || sign.size() > 3 || cFirst.find(sign[0]) == cFirst.npos) return -1;
  for (const LevelRow& row : cOperators)
    if (row.sign == sign) return row.level;
  return -1;
}

// In an expression, operands of one operator are below each other.
IndentPlace IndentScan::PlaceOfOperand(const CppPiece& piece, IndentPlace otherwise) {
  const Frame& frame = Top();
  const Expression& expression = frame.expression;
  const auto below = [&](int column) {
    return column < 0 ? otherwise : IndentPlace{otherwise.habit, otherwise.base, column};
  };
  const auto isString = [](const CppPiece& one) {
    return one.kind == PieceKind::cLiteral && one.text.ends_with('"');
  };
  if (isString(before) && isString(piece)) return below(expression.literal);
  if (piece.text == "." || piece.text == "->") return below(expression.chain);
  if (piece.text == "<<" && expression.stream >= 0) return below(expression.stream);
  if (piece.text == ":") return below(expression.question);
  if (piece.text == "?" && expression.starts[1] >= 0 && expression.question < 0)
    return {IndentHabit::cTernary, expression.starts[1]};
  if (piece.text == "<<" && expression.starts[8] >= 0)
    return {IndentHabit::cContinuation, expression.starts[8]};
  int level = LevelOf(piece.text);
  if (level <= 0) level = LevelOf(before.text);
  if (level <= 0) return otherwise;
  const int start = expression.starts[static_cast<size_t>(level)];
  const bool isWhole = frame.kind != Kind::cParen && !frame.hasAssign && start == expression.first;
  return isWhole ? otherwise : below(start);
}

}  // namespace zendry
