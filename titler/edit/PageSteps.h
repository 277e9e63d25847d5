// What the user does to pages, each one step of undo. What is impossible changes nothing.
#pragma once

namespace titler {

class Document;

/// Adds a page with the first title behind the current one.
void AddPage(Document& document);
/// Adds a copy of the current page behind it.
void DuplicatePage(Document& document);
void DeletePage(Document& document);
/// Moves the current page to another place, from 0; a place that is none is the nearest one.
void MovePage(Document& document, int index);

} // namespace titler
