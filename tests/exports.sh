#!/usr/bin/env bash
# The shared library exports its public names and nothing else.
set -euo pipefail
library=$1
names=$(nm -DCg --defined-only "$library" | cut -d' ' -f3-)
ours='^((typeinfo (name )?|vtable )for |non-virtual thunk to )?(CKv|IKv|SKv|Kv|CreateFileNamingRule|CheckRuleLabels)'
strangers=$(grep -vE "$ours" <<<"$names" || true)
if [ -n "$strangers" ]; then
  printf 'Exported, but not public:\n%s\n' "$strangers"
  exit 1
fi
for name in 'KvSendMessage(' 'KvCreateFileNamingMatcher(' 'CKvGradientCtrl::SetData(' 'CKvSolidColorTemplate::InstallFactoryTemplate(' 'KvFillQuadGradient(' 'KvGuiRes::LoadColor(' \
  'CKvStatic::staticMetaObject' 'KvGetResolutionString(' 'KvTimecode::ToText(' 'vtable for CKvWnd' 'typeinfo for KvMessageEvent' \
  'CreateFileNamingRule(' 'CreateFileNamingRuleCollection(' 'CheckRuleLabels(' 'KvLoadFileNamingCollection(' \
  'KvSaveFileNamingCollection(' 'KvCreateBezierCurve2D(' 'KvBezierEase::Value(' \
  'KvCreateScrollLineHelper(' 'KvCreateScrollRectHelper(' 'CKvScrollBar::SetScroll(' 'CKvLayoutSelector::SetData(' 'CKvProjectFileLayoutData::Select(' 'CKvBitmapButton::CreateButton(' 'CKvButton::SetWindowText(' 'CKvCaptionBar::Create(' 'CKvDialog::DoModal(' 'CKvKeyFrameCtrl::SetToggleCheck(' \
  'CKvColorPanel::SetColor(' 'CKvColorMapWnd::SetHPValue(' 'CKvParamEdit::SetValueRange(' 'CKvRadioBitmapButton::SubClassButton(' \
  'CKvAppLogListCtrl::AddAppLogMsg(' 'CKvFindReplaceTxtDlg::FindNext(' 'CKvCharMapPreviewWnd::Select(' 'CKvCharMapDlg::OnVScroll(' 'CKvFrameWnd::RequestShowState(' 'CKvParamBezierWnd::Load(' 'CKvParamBezierInfo::GetCurve(' 'CKvParamBezierCtrlDlg::GetCurveWnd('; do
  grep -qF "$name" <<<"$names" || { printf 'Not exported: %s\n' "$name"; exit 1; }
done
