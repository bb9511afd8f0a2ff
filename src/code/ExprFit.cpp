#include <algorithm>

#include "code/ContainerTypes.h"
#include "code/ExprTypes.h"

// Which overload fits the types of the arguments.

namespace zendry {

namespace {

constexpr std::string_view cNull = "nullptr_t";
constexpr std::string_view cSmallIntegers = "bool char char8_t char16_t short signed unsigned";
constexpr std::string_view cStrings = "string string_view basic_string basic_string_view";
constexpr std::string_view cLetter = "CharT";  // what the library's strings call their letters

// How well an argument fits a parameter. A type that isn't known neither helps nor harms.
enum Fit {
  cNever = -8,
  cHardly = -2,  // only if a class that isn't known in full has a conversion
  cUnknown = 0,
  cByClass = 1,  // by a constructor of the library
  cConverted = 2,
  cPromoted = 3,
  cSame = 4
};

TypeText PointerTo(std::string_view name) {
  TypeText type = TypeOfName(name);
  type.pointers = 1;
  return type;
}

std::string_view TypeOfNumber(std::string_view number) {
  const bool isHex = number.starts_with("0x") || number.starts_with("0X");
  const char last = number.empty() ? '0' : number.back();
  if (!isHex && number.find_first_of(".eE") != number.npos)
    return last == 'f' || last == 'F' ? "float" : "double";
  return last == 'l' || last == 'L' ? "long" : "int";
}

bool IsPromoted(std::string_view from, std::string_view to) {
  return (IsInList(cSmallIntegers, from) && to == "int") || (from == "float" && to == "double");
}

}  // namespace

// Literals, and expressions that ValueOf can read. A function's name alone has no known type.
ExprTypes::Found ExprTypes::ArgumentValue(int begin, int end) {
  using Kind = CodeToken::Kind;
  while (begin < end && tokens.IsOneOf(begin, "+ -")) ++begin;
  if (begin >= end) return std::nullopt;
  if (tokens.Is(begin, "!")) return Value{TypeOfName("bool"), {}};
  if (tokens.IsKind(begin, Kind::cLiteral)) {
    for (int at = begin; at < end; ++at)
      if (!tokens.IsKind(at, Kind::cLiteral)) return std::nullopt;
    const bool isLetter = tokens.Text(begin).ends_with('\'');
    const bool isPlain = tokens.Text(begin).ends_with('"');
    if (!isLetter && !isPlain) return std::nullopt;
    return Value{isLetter ? TypeOfName("char") : PointerTo("char"), {}};
  }
  if (begin + 1 == end) {
    if (tokens.IsKind(begin, Kind::cNumber))
      return Value{TypeOfName(TypeOfNumber(tokens.Text(begin))), {}};
    if (tokens.IsOneOf(begin, "true false")) return Value{TypeOfName("bool"), {}};
    if (tokens.Is(begin, "nullptr")) return Value{TypeOfName(cNull), {}};
  }
  before = begin;
  Found value = ValueOf(begin, end);
  if (!value || value->isType) return std::nullopt;
  const bool isFunction = value->item && (value->item->kind == 'f' || value->item->kind == 'p');
  if (isFunction && !tokens.Is(end - 1, ")")) return std::nullopt;
  return value;
}

std::vector<ExprTypes::Found> ExprTypes::ArgumentValues(int bracket) {
  std::vector<Found> values;
  const int last = tokens.Count();
  for (int begin = bracket + 1; begin < last;) {
    int end = begin;
    while (end < last && !tokens.Is(end, ",")) {
      const int angle = tokens.Is(end, "<") ? tokens.AngleEnd(end) : -1;
      end = std::max(tokens.IsOpening(end) ? tokens.Partner(end) : end, angle) + 1;
    }
    values.push_back(ArgumentValue(begin, std::min(end, last)));
    begin = end + 1;
  }
  return values;
}

int ExprTypes::FitOf(const Found& argument, const Value& parameter) {
  if (!argument) return cUnknown;
  const Value from = Plain(*argument), to = Plain(parameter);
  if (from.type.IsEmpty() || to.type.IsEmpty()) return cUnknown;
  return FitOfPlain(from, to);
}

int ExprTypes::FitOfPlain(const Value& from, const Value& to) {
  const std::string &given = from.type.Name(), &wanted = to.type.Name();
  const bool isBasic = IsBuiltIn(from.type), takesBasic = IsBuiltIn(to.type);
  const int pointers = from.type.pointers, wantedPointers = to.type.pointers;
  if (given == cNull) {
    if (wantedPointers > 0) return cPromoted;
    return takesBasic && wanted != "bool" ? cNever : cUnknown;
  }
  if (given == wanted && pointers == wantedPointers) return cSame;
  if (!from.type.isExact || !to.type.isExact) return cUnknown;
  const TagClass* record = isBasic ? nullptr : ClassOf(from.type, from.scope);
  const TagClass* target = takesBasic ? nullptr : ClassOf(to.type, to.scope);
  const bool isKnown = isBasic || record || IsContainerType(from.type);
  const bool takesKnown = takesBasic || target || IsContainerType(to.type);
  if (pointers == wantedPointers && record && target) {
    if (record == target) return cSame;
    if (tags.IsDerived(record->name, target->name)) return cConverted;
  }
  if (!isKnown || !takesKnown) return cUnknown;
  if (pointers != wantedPointers) {
    if (wantedPointers > 0) return given == "int" && pointers == 0 ? cHardly : cNever;
    if (takesBasic) return wanted == "bool" ? cByClass : cNever;
    const bool isText = given == "char" && pointers == 1 && IsInList(cStrings, wanted);
    return isText ? cByClass : cHardly;
  }
  if (pointers > 0) return wanted == "void" ? cConverted : cNever;
  if (isBasic && takesBasic) return IsPromoted(given, wanted) ? cPromoted : cConverted;
  return isBasic || !takesBasic ? cHardly : cNever + cPromoted;
}

int ExprTypes::FitOfParameters(const std::vector<Found>& arguments, const std::string& parameters,
                               const std::string& owner) {
  const CallSignature signature = SignatureOf({{}, {}, parameters});
  int fit = 0;
  for (size_t i = 0; i < arguments.size(); ++i) {
    const int place = signature.ParameterFor(static_cast<int>(i));
    if (place < 0) continue;
    const auto [start, end] = signature.parameters[static_cast<size_t>(place)];
    const CodeTokens written(
        signature.label.substr(static_cast<size_t>(start), static_cast<size_t>(end - start)));
    int at = 0;
    std::optional<TypeText> type = ReadType(written, at);
    if (!type) continue;
    if (type->Name() == cLetter && IsInList(cStrings, owner)) type = TypeOfName("char");
    type->pointers = ReadPointers(written, at);
    if (written.Is(at, "(")) continue;
    if (written.IsWord(at)) ++at;
    if (written.Is(at, "[")) ++type->pointers;
    fit += FitOf(arguments[i], {*type, owner});
  }
  return fit;
}

// The argument at the end of the text is still being written.
std::vector<int> ExprTypes::FitsOf(const std::vector<Callable>& callables, const OpenCall& call) {
  std::vector<int> fits(callables.size());
  if (callables.size() < 2 || call.argument == 0) return fits;
  std::vector<Found> arguments = ArgumentValues(call.bracket);
  if (arguments.size() > static_cast<size_t>(call.argument))
    arguments.resize(static_cast<size_t>(call.argument));
  for (size_t i = 0; i < callables.size(); ++i) {
    const size_t colon = callables[i].name.rfind("::");
    const std::string owner =
        colon == std::string::npos ? OwnerName() : callables[i].name.substr(0, colon);
    fits[i] = FitOfParameters(arguments, callables[i].parameters, owner);
  }
  return fits;
}

TagItem* ExprTypes::BestOverload(const std::vector<TagItem*>& functions) {
  const std::vector<OpenCall> calls = Calls();
  if (calls.empty() || functions.size() < 2) return nullptr;
  const std::vector<Found> arguments = ArgumentValues(calls.front().bracket);
  TagItem* best = nullptr;
  int bestFit = 0;
  for (TagItem* function : functions) {
    const int fit =
        FitOfParameters(arguments, function->signature,
                        function->owner ? std::string(function->owner->name) : OwnerName());
    if (best && fit <= bestFit) continue;
    best = function;
    bestFit = fit;
  }
  return best;
}

}  // namespace zendry
