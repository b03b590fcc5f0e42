// The list operations of the main form (delete, move up, move down, add a blank item) and the
// position-based references in page content that they keep right or refuse to break.
#pragma once

#include <string>

namespace lumora {

class Session;

enum class ListKind { None, Pages, Questions, Options, Terms };

// First match wins, by a case-sensitive search of the list control's name:
// "Page", "Q", "Option", "Term".
ListKind listKindFromName(const std::string& listName);

// Reference forms inside lesson page content.
std::string pageLinkSearch(int page);                         // <A href="pageN.html"
std::string termLinkHTML(int term, const std::string& inner); // as the term chooser inserts
std::string termLinkSearch(int term);                         // showGlossaryPopup('N',

// `selected` is the list's selected position, -1 for none; a position past the end of the list
// changes nothing. Each ends by marking the module changed, also when it only showed a message.
void deleteListItem(Session& session, const std::string& listName, int selected);
void moveListItemUp(Session& session, const std::string& listName, int selected);
void moveListItemDown(Session& session, const std::string& listName, int selected);

// Add a blank item at the end, reusing a trailing blank one; the new item becomes current.
// addBlankPage changes only the record: the caller writes the new page's file (from the
// template's skeleton page) so that the module folder stays runnable.
void addBlankPage(Session& session);
void addBlankQuestion(Session& session);
void addBlankOption(Session& session);
void addBlankTerm(Session& session);

// Removes questions whose text is blank; run after a load and before a save.
void dropBlankQuestions(Session& session);

} // namespace lumora
