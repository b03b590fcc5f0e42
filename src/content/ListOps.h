// The list operations of the main form (delete, move up, move down, add a blank item) and the
// position-based references in page content that they keep right or refuse to break.
#pragma once

#include "base/Prompt.h"
#include "content/ContentForms.h"
#include "storage/CourseModule.h"

#include <cstdint>
#include <string>

namespace lumora {

// What the list operations work on: the module, the selection positions beside it, the blank
// records new items are copied from, the paths of activity placeholders, and the author, who
// is asked before a delete and told of a refusal. The session hands out one (Session::lists).
struct ListContext {
    CourseModule& module;
    const DefaultRecords& defaults;
    ContentPaths paths;
    Prompt& prompt;
    std::int16_t& CurrentPage;
    std::int16_t& CurrentItem;
    std::int16_t& CurrentOption;
    std::int16_t& CurrentTerm;
    bool& ModuleChanged;

    void markChanged() const { ModuleChanged = true; }
};

enum class ListKind { None, Pages, Questions, Options, Terms };

// First match wins, by a case-sensitive search of the list control's name:
// "Page", "Q", "Option", "Term".
ListKind listKindFromName(const std::string& listName);

// Reference forms inside lesson page content. A page link is written with the upper-case tag
// the design view serialises, so one typed into the source view is found and renumbered too.
std::string pageLinkSearch(int page);                         // <A href="pageN.html"
std::string pageLinkHTML(int page, const std::string& inner); // <A href="pageN.html">inner</A>
std::string termLinkHTML(int term, const std::string& inner); // as the term chooser inserts
std::string termLinkSearch(int term);                         // showGlossaryPopup('N',

// `selected` is the list's selected position, -1 for none; a position past the end of the list
// changes nothing. Each ends by marking the module changed, also when it only showed a message.
void deleteListItem(const ListContext& ctx, const std::string& listName, int selected);
void moveListItemUp(const ListContext& ctx, const std::string& listName, int selected);
void moveListItemDown(const ListContext& ctx, const std::string& listName, int selected);

// Add a blank item at the end, reusing a trailing blank one; the new item becomes current.
// addBlankPage changes only the record: the caller writes the new page's file (from the
// template's skeleton page) so that the module folder stays runnable.
void addBlankPage(const ListContext& ctx);
void addBlankQuestion(const ListContext& ctx);
void addBlankOption(const ListContext& ctx);
void addBlankTerm(const ListContext& ctx);

// Removes questions whose text is blank; run after a load and before a save.
void dropBlankQuestions(const ListContext& ctx);

} // namespace lumora
