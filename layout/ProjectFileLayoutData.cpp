#include "KvLayoutSelector.h"

#include <algorithm>

CKvProjectFileLayoutData::CKvProjectFileLayoutData(IKvLayoutProject* project) : m_project(project)
{
    if (!m_project)
        return;
    m_project->AddRef();
    m_count = std::max(m_project->GetLayoutCount(), 0);
}

CKvProjectFileLayoutData::~CKvProjectFileLayoutData()
{
    if (m_project)
        m_project->Release();
}

int CKvProjectFileLayoutData::AddRef()
{
    return ++m_references;
}

int CKvProjectFileLayoutData::Release()
{
    const int left = --m_references;
    if (left == 0)
        delete this;
    return left;
}

int CKvProjectFileLayoutData::GetCount()
{
    return m_count;
}

BOOL CKvProjectFileLayoutData::GetUnit(int index, wchar_t name[64], IKvThumbImage** thumbnail,
                                       IKvThumbImage** mark)
{
    name[0] = L' ';
    name[1] = L'\0';
    *thumbnail = nullptr;
    *mark = nullptr;
    if (index < 0 || index >= m_count)
        return 0;
    m_project->GetLayoutThumb(index, thumbnail);
    return *thumbnail ? 1 : 0;
}

BOOL CKvProjectFileLayoutData::IsSelected(int index)
{
    return index >= 0 && index == m_selected ? 1 : 0;
}

int CKvProjectFileLayoutData::Select(int index, BOOL)
{
    if (index < 0 || index >= m_count)
        return 0;
    m_selected = index;
    int count = m_count;
    const int result = m_project->SetCurrentLayout(index, count);
    m_count = std::max(count, 0);
    return result;
}
