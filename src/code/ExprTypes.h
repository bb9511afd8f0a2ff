#pragma once

#include <optional>
#include <string>
#include <vector>

#include "code/CallTip.h"
#include "code/CodeTokens.h"
#include "code/DeclRead.h"
#include "code/ExprRead.h"
#include "code/OpenCalls.h"
#include "code/TagLookup.h"
#include "code/TagText.h"
#include "code/TypeText.h"

namespace zendry {

// The operand before a member operator at the caret.
struct ExprOperand {
  std::string className;  // the class whose members are asked for; empty for a namespace
  std::string nameSpace;  // the namespace whose content is asked for
  std::string prefix;     // the letters after the operator
};

// Finds the types of expressions in the text before a place: it reads declarations in the blocks
// around, the expressions that "auto" takes its type from, members, aliases and template arguments.
// It is used when the plain lookup of names finds nothing. It doesn't guess: an unknown expression
// has no value. Tags that it returns are invalid after the next parse.
class ExprTypes {
 public:
  // Everything must outlive it. `theScope` is the tag around the place, null without one. Text
  // before `earliest` isn't read.
  ExprTypes(TagLookup& theTags, CodeSources& theSources, const CaretText& editor,
            const TagData* current, const TagItem* theScope, int place, int earliest = 0);

  // The operand of the member operator that ends at the place, or before letters that end there.
  std::optional<ExprOperand> Operand();
  // The tag of the expression whose last name ends at the place; null without one.
  TagItem* Item();
  // The calls that the place is in, the innermost first.
  std::vector<OpenCall> Calls() { return OpenCalls(tokens, budget); }
  // What a call may mean: functions, constructors, a macro, or an object that can be called. Empty
  // if that isn't known. `begin` becomes the token where the name begins.
  std::vector<Callable> Callables(const OpenCall& call, int& begin);
  // The one of some functions that fits the arguments of the call best by their types; of those
  // that fit alike the first. The place is in the call, after its arguments. Null if that isn't a
  // call.
  TagItem* BestOverload(const std::vector<TagItem*>& functions);
  // How well the types of the arguments before the one at the end of the text fit each of them.
  std::vector<int> FitsOf(const std::vector<Callable>& callables, const OpenCall& call);
  // How far a token begins before the place.
  int BytesBefore(int token) const { return tokens.Size() - tokens.Start(token); }

 private:
  // The value of an expression, as far as its type goes.
  struct Value {
    TypeText type;
    std::string scope;        // the class in which to look up the names of the type
    bool isType = false;      // the expression names a type
    TagItem* item = nullptr;  // the tag that the last name was resolved to
  };
  using Found = std::optional<Value>;

  Found ValueOf(int begin, int end);
  Found ValueOf(const Expr& expr);
  // `call`: the step after it, if that is a call.
  Found Apply(const Value& value, const ExprStep& step, const ExprStep* call);
  Found NameValue(const ExprStep& step, const ExprStep* call);
  Found LocalValue(const std::string& name);
  Found QualifiedValue(const TypeText& path);
  void FollowNamespaceAlias(TypeText& path) const;
  TagItem* LibraryName(const TypeText& path);
  Found LibraryCall(const TypeText& path, const ExprStep& call);
  Found DeclValue(const CodeDecl& decl);
  Found ItemValue(TagItem& item, const TypeText& owner);
  TypeText AsBase(const TypeText& type, const TagClass& base);
  Value Pointee(const Value& value);
  void FillArguments(Value& value, const TagClass& record, const TypeText& owner);
  Found MemberValue(const Value& value, const std::string& name, bool isArrow,
                    const ExprStep* call = nullptr);
  Found OperatorValue(const Value& value, const char* name);
  TagItem* MemberNamed(const TagClass& record, std::string_view name);
  Found Indexed(const Value& value);
  Found Dereferenced(const Value& value);
  Found ElementValue(const Value& value);
  Found BoundValue(const Value& value, size_t place);
  Found WithType(std::optional<TypeText> type, const Value& from) const;

  // Follows aliases until a class, a container or a built-in type is reached.
  Value Plain(Value value);
  Found Alias(const Value& value);
  Found NamedAlias(const Value& value);
  Found NestedAlias(const Value& value);
  Found WrittenAlias(const std::string& name);
  std::optional<CodeDecl> FindAlias(const std::string& name);
  TagClass* ClassOf(const TypeText& type, const std::string& scope);
  bool IsKnown(const Value& value);
  std::optional<ExprOperand> Scope(int begin, int end);

  // Group: macros (ExprMacros.cpp).
  Found ExpandedValue(TagItem& macro, const ExprStep* call);
  Found MacroAlias(const TagItem& macro);
  Found MacroMember(const Value& object, const std::string& name);

  // Group: calls (ExprCalls.cpp).
  using CallableList = std::vector<Callable>;
  std::optional<CallableList> Declared(int name, bool isBrace);
  std::optional<CallableList> Initialised(int begin, int end, bool isBrace);
  std::optional<CallableList> MadeByLibrary(int begin, int end);
  std::optional<CallableList> LocalCallables(const std::string& name);
  std::optional<CallableList> OfTag(const std::string& name);
  std::optional<Callable> OfType(const TypeText& type, const std::string& name);
  CallableList Constructors(const Value& value, bool isBrace);
  CallableList Aggregate(const TagClass& record);
  CallableList OfValue(const Value& value, bool isBrace);
  CallableList OfLibrary(std::string_view name);
  CallableList Overloads(const TagItem& item);
  TagItem& FittingOverload(TagItem& first, const ExprStep& call);
  CallableList Read(const std::vector<const TagItem*>& items);

  // Group: overloads (ExprFit.cpp).
  Found ArgumentValue(int begin, int end);
  std::vector<Found> ArgumentValues(int bracket);
  int FitOf(const Found& argument, const Value& parameter);
  int FitOfPlain(const Value& argument, const Value& parameter);
  int FitOfParameters(const std::vector<Found>& arguments, const std::string& parameters,
                      const std::string& owner);
  std::string OwnerName() const;

  TagLookup& tags;
  CodeSources& sources;
  TagText tagText;
  const TagItem* scope;
  std::string scopeFile;
  CodeTokens tokens;
  std::optional<std::vector<int>> aliases;  // the tokens "using" and "typedef"
  StepBudget budget;
  int before = 0;  // only declarations before this token are found
  int depth = 0;
  int expansions = 0;  // of macros so far
};

}  // namespace zendry
