// What the controls of the gallery show: data of their own, so that each of them can be tried.
#pragma once

#include "KvLayoutSelector.h"
#include "KvParamBezierCtrlDlg.h"
#include "KvReportListCtrl.h"

#include <functional>
#include <utility>

class CKvAppLogListCtrl;
class CKvRibbonMenuBar;
class CKvRibbonTitlebar;
class CKvSubTitleTxtListEditor;
class CKvTextEditListCtrl;

namespace titler {

/// The ease between two keys, as the ease window and its dialog edit it.
class SampleEase : public IKvDataOperator
{
public:
    /// @param told gets the names of the calls that change something; empty for nobody.
    void Tell(std::function<void(const char* call)> told) { m_told = std::move(told); }

    int BeginEdit(const wchar_t*, const wchar_t*) override;
    int CommitEdit(const wchar_t*, const wchar_t*) override;
    int CancelEdit(const wchar_t*, const wchar_t*) override;
    int GetEaseData(const wchar_t*, const wchar_t*, SKvParamEaseData& out) override;
    int SetEaseData(const wchar_t*, const wchar_t*, const SKvParamEaseData& in) override;

private:
    int Told(const char* call) const;

    SKvParamEaseData m_data{kKvEaseDrawn, 0.35, -4, 0.45, 2, 0, 0, 50, 100, -20, 120, 0};
    SKvParamEaseData m_before = m_data; ///< the transaction that is open
    std::function<void(const char*)> m_told;
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

void FillSample(SampleList& list);
void FillSample(CKvTextEditListCtrl& list);
void FillSample(CKvSubTitleTxtListEditor& list);
void FillSample(CKvAppLogListCtrl& log);
void FillSample(CKvRibbonTitlebar& bar);
void FillSample(CKvRibbonMenuBar& bar, HMENU menu);

} // namespace titler
