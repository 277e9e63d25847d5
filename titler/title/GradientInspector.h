// The gradient of what is coloured: the gradient control, where the selected stop stands, and the direction.
#pragma once

#include "KvGradientCtrl.h"
#include "project/Project.h"

#include <QWidget>

#include <memory>
#include <optional>

class QDoubleSpinBox;

namespace titler {

class Document;

/// Shows the gradient of the selected target, and nothing new while that has none.
class GradientInspector : public QWidget
{
    Q_OBJECT

public:
    explicit GradientInspector(Document& document);
    ~GradientInspector() override;

private:
    void BuildControl();
    void BuildFields();
    std::optional<LRESULT> OnMessage(UINT message, LPARAM lParam);
    void OnGradientNotify(const GradientNotifyRecord& record);
    void TakeStops();
    void ShowProject();
    void ShowPosition();
    void MoveStop(double position);
    const Paint* Shown() const;

    Document& m_document;
    CKvGradientCtrl* m_control; ///< a child, as is everything below
    QDoubleSpinBox* m_position;
    QDoubleSpinBox* m_angle;
    int m_run = 0; ///< of the control's own edits
    // Dies before the control, so that no message finds half an inspector.
    std::unique_ptr<KvMessageSink> m_messages;
};

} // namespace titler
