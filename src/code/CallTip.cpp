#include "code/CallTip.h"

#include <algorithm>
#include <climits>

#include "base/CaretText.h"
#include "code/CodeTokens.h"
#include "code/OpenCalls.h"

namespace zendry {

namespace {

// True for "(void)", the list of parameters of a C function that has none.
bool IsVoid(const CodeTokens& tokens, int begin, int end) {
  return end - begin == 1 && tokens.Is(begin, "void");
}

// The end of the parameter that begins at a token: that of the "," or of the bracket after it.
int ParameterEnd(const CodeTokens& tokens, int at, int end) {
  for (; at < end && !tokens.Is(at, ","); ++at) {
    if (tokens.IsOpening(at)) {
      at = tokens.Partner(at);
    } else if (tokens.Is(at, "<")) {
      const int close = tokens.AngleEnd(at);
      if (close > at && close < end) at = close;
    }
  }
  return at;
}

constexpr int cLongestCall = 4096;  // bytes

}  // namespace

int CallSignature::ParameterFor(int argument) const {
  const int count = static_cast<int>(parameters.size());
  if (argument < count) return argument;
  return takesMore ? count - 1 : -1;
}

bool CallSignature::Takes(int arguments) const {
  return takesMore || arguments <= static_cast<int>(parameters.size());
}

Arity ArityOf(const std::string& parameters) {
  const CallSignature signature = SignatureOf({{}, {}, parameters});
  Arity arity{0, static_cast<int>(signature.parameters.size())};
  for (const auto& [start, end] : signature.parameters) {
    const std::string_view text =
        std::string_view(signature.label)
            .substr(static_cast<size_t>(start), static_cast<size_t>(end - start));
    if (text.find('=') == text.npos && text.find("...") == text.npos) ++arity.least;
  }
  if (signature.takesMore) arity.most = INT_MAX;
  return arity;
}

CallSignature SignatureOf(const Callable& callable) {
  CallSignature signature;
  std::string& label = signature.label;
  label = callable.result;
  // "char *f" is kept as it is written.
  const bool isJoined = label.ends_with(" *") || label.ends_with(" &");
  if (!label.empty() && !isJoined) label += ' ';
  label += callable.name;
  const int offset = static_cast<int>(label.size());
  const CodeTokens tokens(callable.parameters);
  const int close = tokens.Partner(0);
  const int end = close > 0 ? close : tokens.Count();
  label +=
      callable.parameters.substr(0, static_cast<size_t>(tokens.End(close > 0 ? close : end - 1)));
  if (IsVoid(tokens, 1, end)) return signature;
  for (int at = 1; at < end;) {
    const int next = ParameterEnd(tokens, at, end);
    if (next > at) {
      signature.parameters.push_back({offset + tokens.Start(at), offset + tokens.End(next - 1)});
      signature.takesMore = tokens.Source(at, next).find("...") != std::string_view::npos;
    }
    at = next + 1;
  }
  return signature;
}

void SortByArguments(std::vector<CallSignature>& overloads, int arguments) {
  std::vector<CallSignature> kept;
  for (CallSignature& signature : overloads) {
    const auto isSame = [&](const CallSignature& other) { return other.label == signature.label; };
    if (std::none_of(kept.begin(), kept.end(), isSame)) kept.push_back(std::move(signature));
  }
  overloads = std::move(kept);
  const auto isBefore = [arguments](const CallSignature& a, const CallSignature& b) {
    if (a.Takes(arguments) != b.Takes(arguments)) return a.Takes(arguments);
    if (a.fit != b.fit) return a.fit > b.fit;
    return a.parameters.size() < b.parameters.size();
  };
  std::stable_sort(overloads.begin(), overloads.end(), isBefore);
}

bool IsInCall(const CaretText& editor) {
  const int caret = editor.CaretPosition();
  const int start = std::max(caret - cLongestCall, 0);
  std::string text(static_cast<size_t>(caret - start), '\0');
  editor.CopyRange(start, caret, text.data());
  StepBudget budget;
  return !OpenCalls(CodeTokens(std::move(text)), budget).empty();
}

CallPlace PlaceInCall(const CaretText& editor, int bracket) {
  const int caret = editor.CaretPosition();
  if (bracket < 0 || caret <= bracket || caret - bracket > cLongestCall) return {};
  // A name makes a call of the bracket.
  std::string text = "f";
  text.resize(1 + static_cast<size_t>(caret - bracket));
  editor.CopyRange(bracket, caret, text.data() + 1);
  const CodeTokens tokens(std::move(text));
  StepBudget budget;
  const std::vector<OpenCall> calls = OpenCalls(tokens, budget);
  if (calls.empty() || calls.back().bracket != 1) return {};
  const int innermost = bracket + tokens.Start(calls.front().bracket) - 1;
  return {static_cast<int>(calls.size()), calls.back().argument, calls.back().arguments, innermost};
}

}  // namespace zendry
