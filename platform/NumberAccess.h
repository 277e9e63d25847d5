// A number edit as a screen reader finds it.
#pragma once

class CKvParamEdit;

namespace kv {

/// Makes the interface of every number edit; may be called often.
void InstallNumberAccess();
/// The number changed.
void TellNumberChanged(CKvParamEdit& edit);

} // namespace kv
