#include "project/Pages.h"

#include "project/ProjectJson.h"

#include <algorithm>
#include <utility>

namespace titler {
namespace {

Page& CurrentPage(Project& project)
{
    return project;
}

std::shared_ptr<const Page> TakeCurrent(Project& project)
{
    return std::make_shared<const Page>(std::exchange(CurrentPage(project), {}));
}

bool HasPage(const Project& project, int index)
{
    return index >= 0 && index < PageCount(project);
}

} // namespace

int PageCount(const Project& project)
{
    return static_cast<int>(project.otherPages.size()) + 1;
}

const Page& PageAt(const Project& project, int index)
{
    if (index == project.pageIndex)
        return project;
    return *project.otherPages[index < project.pageIndex ? index : index - 1];
}

bool HaveSamePages(const Project& a, const Project& b)
{
    if (PageCount(a) != PageCount(b))
        return false;
    for (int i = 0; i < PageCount(a); ++i) {
        const Page& one = PageAt(a, i);
        const Page& other = PageAt(b, i);
        if (&one != &other && !(one == other))
            return false;
    }
    return true;
}

void ReplacePage(Project& project, int index, Page page)
{
    if (index == project.pageIndex)
        CurrentPage(project) = std::move(page);
    else
        project.otherPages[index < project.pageIndex ? index : index - 1] =
            std::make_shared<const Page>(std::move(page));
}

void ChoosePage(Project& project, int index)
{
    if (index == project.pageIndex || !HasPage(project, index))
        return;
    project.otherPages.insert(project.pageIndex, TakeCurrent(project));
    CurrentPage(project) = *project.otherPages.takeAt(index);
    project.pageIndex = index;
}

void AddPage(Project& project, Page page)
{
    if (PageCount(project) >= kMostPages)
        return;
    project.otherPages.insert(project.pageIndex, TakeCurrent(project));
    CurrentPage(project) = std::move(page);
    ++project.pageIndex;
}

void DeletePage(Project& project)
{
    if (PageCount(project) == 1)
        return;
    const int next = std::min(project.pageIndex, PageCount(project) - 2);
    CurrentPage(project) = *project.otherPages.takeAt(next);
    project.pageIndex = next;
}

void MovePage(Project& project, int index)
{
    if (HasPage(project, index))
        project.pageIndex = index; // the others stand in their order
}

} // namespace titler
