// Everything at once.
#pragma once

#include "KvButtons.h"
#include "KvCaptionBar.h"
#include "KvDialog.h"
#include "KvFileNaming.h"
#include "KvGradientCtrl.h"
#include "KvGuiRes.h"
#include "KvKeyFrameCtrl.h"
#include "KvMenu.h"
#include "KvParamBezierCtrlDlg.h"
#include "KvParamBezierWnd.h"
#include "KvPlatform.h"
#include "KvRibbonMenuBar.h"
#include "KvTypes.h"
#include "KvUnknown.h"
#include "KvVideoFormat.h"
#include "KvWnd.h"
