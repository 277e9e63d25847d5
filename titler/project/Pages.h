// The pages of a project: which there are, and which is the current one.
#pragma once

#include "project/Project.h"

namespace titler {

/// How many there are, 1 to kMostPages.
int PageCount(const Project& project);
/// @param index from 0, below `PageCount`. @return a page as long as the project stays as it is; of projects
/// that are copies of one another, pages that nobody changed since are the same object.
const Page& PageAt(const Project& project, int index);
/// True when both have the same pages in the same order, whichever is the current one.
bool HaveSamePages(const Project& a, const Project& b);

/// Puts a page in the place of another; which one is current stays. @param index as for `PageAt`.
void ReplacePage(Project& project, int index, Page page);
/// Makes a page the current one; an index that is none changes nothing.
void ChoosePage(Project& project, int index);

// What the user does to pages. What is impossible changes nothing.

/// Puts a page behind the current one and makes it the current one. There can be kMostPages.
void AddPage(Project& project, Page page);
/// Removes the current page; the next one becomes the current one, or else the last. One page stays.
void DeletePage(Project& project);
/// Moves the current page to another place.
void MovePage(Project& project, int index);

} // namespace titler
