// The title's gradient: the gradient control, the selected stop and the direction.
#pragma once

#include "KvGradientCtrl.h"
#include "project/Project.h"

#include <QWidget>

#include <memory>
#include <optional>

class QDoubleSpinBox;

namespace titler {

class Document;
class StopInspector;

class GradientInspector : public QWidget
{
    Q_OBJECT

public:
    explicit GradientInspector(Document& document);
    ~GradientInspector() override;

private:
    void BuildControl();
    void BuildFields();
    void ConnectStop();
    std::optional<LRESULT> OnMessage(UINT message, LPARAM lParam);
    void OnGradientNotify(const GradientNotifyRecord& record);
    void ShowProject();
    void ShowSelectedStop();
    void SetStopColour(DWORD colour);
    void MoveStop(double position);

    Document& m_document;
    CKvGradientCtrl* m_control; ///< a child, as is everything below
    StopInspector* m_stop;
    QDoubleSpinBox* m_angle;
    // Dies before the control, so that no message finds half an inspector.
    std::unique_ptr<KvMessageSink> m_messages;
};

} // namespace titler
