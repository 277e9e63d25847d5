// What the controls of the gallery show: data of their own, so that each of them can be tried.
#pragma once

#include "KvLayoutSelector.h"
#include "KvParamBezierCtrlDlg.h"
#include "KvReportListCtrl.h"

namespace titler {

/// The ease between two keys, as the ease window and its dialog edit it.
class SampleEase : public IKvDataOperator
{
public:
    int BeginEdit(const wchar_t*, const wchar_t*) override;
    int CommitEdit(const wchar_t*, const wchar_t*) override { return 1; }
    int CancelEdit(const wchar_t*, const wchar_t*) override;
    int GetEaseData(const wchar_t*, const wchar_t*, SKvParamEaseData& out) override;
    int SetEaseData(const wchar_t*, const wchar_t*, const SKvParamEaseData& in) override;

private:
    SKvParamEaseData m_data{kKvEaseDrawn, 0.35, -4, 0.45, 2, 0, 0, 50, 100, -20, 120, 0};
    SKvParamEaseData m_before = m_data; ///< the transaction that is open
};

/// @return pages with pictures and names; one reference, the caller's.
IKvLayoutSelectorData* MakeSamplePages();

/// A report list as a host derives one: rows that can be edited in place.
class SampleList : public CKvReportListCtrl
{
    Q_OBJECT

public:
    void Fill();

protected:
    BOOL _CanEditCell(int line, int column) override;
};

} // namespace titler
