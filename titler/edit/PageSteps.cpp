#include "edit/PageSteps.h"

#include "edit/Document.h"
#include "project/Pages.h"
#include "window/Texts.h"

#include <algorithm>
#include <utility>

namespace titler {
namespace {

void Insert(Document& document, UINT step, Page page)
{
    if (PageCount(document.Current()) < kMostPages)
        document.Edit(
            EditKind::Single, step, [&](Project& project) { AddPage(project, std::move(page)); },
            document.Selection().AtBegin());
}

} // namespace

void AddPage(Document& document)
{
    Page page = NewPage();
    page.title.text = Text(kTextNewTitle);
    Insert(document, kStepAddPage, std::move(page));
}

void DuplicatePage(Document& document)
{
    Insert(document, kStepDuplicatePage, document.Current());
}

void DeletePage(Document& document)
{
    if (PageCount(document.Current()) > 1)
        document.Edit(
            EditKind::Single, kStepDeletePage, [](Project& project) { DeletePage(project); },
            document.Selection().AtBegin());
}

void MovePage(Document& document, int index)
{
    const int place = std::clamp(index, 0, PageCount(document.Current()) - 1);
    document.Edit(EditKind::Single, kStepMovePage, [&](Project& project) { MovePage(project, place); });
}

} // namespace titler
