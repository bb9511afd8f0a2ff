#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tags/IncludeGraph.h"
#include "tags/MacroNamespaces.h"
#include "tags/MemberMacros.h"
#include "tags/OpenNamespaces.h"
#include "tags/TagIndex.h"

namespace zendry {

class CodeSources;

// Finds classes, globals and members by name in the project's stores and the reference libraries.
// The tags that it finds belong to a store and are invalid when that is parsed again. Their
// `module` and `owner` are set; `module` is null for tags of a reference library.
//
// Every lookup gives the tag that a walk over all stores in their order would meet first. Among
// classes or globals of one name, those of the file that the name is in go first, then those of the
// files that it includes, the nearest first. `from` is the store of that file; null means the one
// of LookFrom. A class's bases are walked from the last to the first; no walk goes deeper than 17
// classes, so that it ends even for classes which derive from each other.
class TagLookup {
 public:
  static constexpr int cMostDepth = 17;

  enum class Want { cDeclaration, cDefinition };

  // `theSources` must outlive it.
  explicit TagLookup(CodeSources& theSources) : sources(theSources) {}

  // Sets the file in front. It is only compared, never read.
  void LookFrom(const TagData* module) { front = module; }
  // The module of a file name; null without one.
  TagData* ModuleNamed(std::string_view fileName);

  // The record of that class in the first module that holds the class itself, not only members of
  // it; else that of the library.
  TagClass* findClass(std::string_view name, const TagData* from = nullptr);
  // The full name of the class that a type means in the scope of a class: one nested there goes
  // before a namesake. The type itself without such a one.
  std::string NameInScope(const std::string& type, std::string_view scope,
                          const TagData* from = nullptr);
  // The class of a reference library.
  TagClass* findLibraryClass(std::string_view name) const;
  // A global: that of the module with the file name `moduleName`, else of the first module that has
  // one, else the class of that name, else one of C's library.
  TagItem* findGlobal(std::string_view name, std::string_view moduleName);
  // A member of a class of the project or of its bases there. cDeclaration accepts prototypes and
  // tags with an access; cDefinition accepts everything but prototypes.
  TagItem* findMember(std::string_view className, std::string_view memberName, Want want,
                      int depth = 0, const TagData* from = nullptr);
  // A member of a class or its bases, without definitions outside of the class.
  TagItem* findMemberInClass(std::string_view className, std::string_view memberName, int depth = 0,
                             const TagData* from = nullptr);
  // The last member of a path such as "a.b.c", where `a` is a member of `typeName`.
  TagItem* findMemberPath(std::string_view path, std::string_view typeName,
                          const TagData* from = nullptr);
  // Appends the members of a class and its bases whose names begin with `prefix`, without
  // definitions outside of the class. A base that is met again is listed once. A class that isn't
  // found is logged. With a viewer, the class that the code belongs to which asks ("" for none), a
  // private or protected base of a class is left out unless the viewer is that class, is in it or
  // derives from it; its members stay that the class declares again by "using".
  void listMembers(std::vector<TagItem*>& out, std::string_view className, std::string_view prefix,
                   int depth = 0, const TagData* from = nullptr,
                   const std::string* viewer = nullptr);
  // Appends the first global, then the first class, struct or union, and then the first enumerator
  // of each name with this prefix in the project, in the order of names.
  void listGlobals(std::vector<TagItem*>& out, std::string_view prefix);
  // Appends the classes that are declared directly inside of a class or its bases and whose own
  // names begin with `prefix`.
  void listNestedClasses(std::vector<TagItem*>& out, std::string_view className,
                         std::string_view prefix);
  // Appends the names with this prefix of the reference library with that namespace, or of an inner
  // one by its own name; with an empty namespace those of C.
  void listLibrary(std::vector<TagItem*>& out, std::string_view nameSpace, std::string_view prefix);
  // The functions, macros, types and variables of that name that the reference libraries have in a
  // namespace, or outside of all.
  std::vector<TagItem*> findLibraryNames(std::string_view nameSpace, std::string_view name);

  // All library names that have the name and the namespace of a tag, itself among them, if it is
  // one of these.
  std::vector<TagItem*> findNamesakes(const TagItem& item);

  // Appends the names with this prefix in a scope that isn't a class: the enumerators that are kept
  // under its name, the globals and classes that come after the beginning of a namespace of that
  // name in their files, which a macro may open too; and what the libraries have in that namespace.
  // If no file that the one in front includes opens it, but others do: all that these files
  // declare.
  void listNamespace(std::vector<TagItem*>& out, std::string_view name, std::string_view prefix);

  // Where a file, or what it includes, opens a namespace first, itself or by a macro. A line of 0
  // for none.
  struct NamespacePlace {
    const TagData* file = nullptr;
    int line = 0;  // from 1
  };
  NamespacePlace findNamespace(std::string_view name, const TagData* from);

  // True if a class derives from another one, at any depth, or is the same.
  bool IsDerived(std::string_view className, std::string_view baseName);

  // Prepares the index, so that the first lookup after loading a project is as fast as the next.
  const TagIndex& EnsureIndex();

 private:
  using MacroOf = std::function<TagClass*(std::string_view, const TagData*)>;
  using AliasOf = std::function<std::string(std::string_view, const TagData*)>;

  TagClass* ClassOf(std::string_view name, const TagData* from);
  TagClass* ProjectClass(std::string_view name, const TagData* from, std::string_view space = {});
  bool ListMacroNamespace(std::vector<TagItem*>& out, std::string_view name,
                          std::string_view prefix);
  bool IsOpenTo(const TagClass& record, const std::string& viewer);
  bool ListNamespaceFile(std::vector<TagItem*>& out, int number, int firstLine,
                         std::string_view prefix);
  TagItem* NearestGlobal(std::string_view name, const TagData* from, int kind);
  TagClass* MacroMembers(std::string_view name, const TagData* from);
  MacroOf MacroFinder();
  AliasOf AliasFinder();
  std::vector<TagClass*> AllRecords(std::string_view name, const TagData* from);

  CodeSources& sources;
  TagIndex index;
  IncludeGraph includes;
  MemberMacros memberMacros;
  MacroNamespaces macroNamespaces;
  OpenNamespaces openNamespaces;
  const TagData* front = nullptr;
};

}  // namespace zendry
