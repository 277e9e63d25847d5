// The keyframe strip's properties, which forms set before there is a button.
#include "curves/KvKeyFrameCtrlImpl.h"

using namespace kv::keyframe;

bool CKvKeyFrameCtrl::IsVertical() const
{
    return m_impl->vertical;
}

void CKvKeyFrameCtrl::SetVertical(bool vertical)
{
    if (vertical == m_impl->vertical)
        return;
    if (m_impl->HasButtons())
        m_impl->Turn(vertical);
    else
        m_impl->vertical = vertical;
}

bool CKvKeyFrameCtrl::IsAnimated() const
{
    return m_impl->HasButtons() ? GetToggleCheck() != 0 : m_impl->preset.animated;
}

void CKvKeyFrameCtrl::SetAnimated(bool animated)
{
    m_impl->preset.animated = animated;
    SetToggleCheck(animated ? 1 : 0);
}

bool CKvKeyFrameCtrl::HasKey() const
{
    return m_impl->HasButtons() ? GetKeyOperatorCheck() != 0 : m_impl->preset.hasKey;
}

void CKvKeyFrameCtrl::SetHasKey(bool hasKey)
{
    m_impl->preset.hasKey = hasKey;
    SetKeyOperatorCheck(hasKey ? 1 : 0);
}

bool CKvKeyFrameCtrl::IsPreviousEnabled() const
{
    return m_impl->HasButtons() ? m_impl->IsEnabled(kPrevious) : m_impl->preset.previousEnabled;
}

void CKvKeyFrameCtrl::SetPreviousEnabled(bool enabled)
{
    m_impl->preset.previousEnabled = enabled;
    EnablePreviousKeyCtrl(enabled ? 1 : 0);
}

bool CKvKeyFrameCtrl::IsNextEnabled() const
{
    return m_impl->HasButtons() ? m_impl->IsEnabled(kNext) : m_impl->preset.nextEnabled;
}

void CKvKeyFrameCtrl::SetNextEnabled(bool enabled)
{
    m_impl->preset.nextEnabled = enabled;
    EnableNextKeyCtrl(enabled ? 1 : 0);
}
