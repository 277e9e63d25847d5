#include "designer/Plugin.h"

#include "KvSolidColorTemplate.h"
#include "designer/ControlTable.h"

#include <QTemporaryDir>

namespace {

// Swatches for the forms that are drawn, in a folder of their own: no host's file is touched.
void ShowSwatches()
{
    static const QTemporaryDir folder;
    CKvSolidColorTemplate::SetSystemFolder(KvFromQString(folder.path()));
    CKvSolidColorTemplate::InstallFactoryTemplate();
}

// Designer takes an icon that names no sizes for none, and a drawing names none.
QIcon DrawnIcon(const QString& file)
{
    const QIcon drawing(file);
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64})
        icon.addPixmap(drawing.pixmap(size, size));
    return icon;
}

class ControlInterface final : public QDesignerCustomWidgetInterface
{
public:
    explicit ControlInterface(const kv::DesignerControl& control) : m_control(control) {}

    QString name() const override { return QString::fromLatin1(m_control.name); }
    QString group() const override { return QStringLiteral("Kv Controls"); }
    QString toolTip() const override { return QString::fromLatin1(m_control.toolTip); }
    QString whatsThis() const override { return QString::fromLatin1(m_control.whatsThis); }
    QString includeFile() const override { return QString::fromLatin1(m_control.header); }
    QIcon icon() const override
    {
        return DrawnIcon(QStringLiteral(":/kv/designer/icons/%1.svg").arg(name()));
    }
    bool isContainer() const override { return false; }
    QWidget* createWidget(QWidget* parent) override { return m_control.make(parent); }
    QString domXml() const override { return kv::DesignerForm(m_control); }
    bool isInitialized() const override { return m_isInitialised; }
    // Called by Qt Designer, not by hosts that load forms.
    void initialize(QDesignerFormEditorInterface*) override
    {
        if (name() == QLatin1String(CKvSolidColorTemplate::staticMetaObject.className()))
            ShowSwatches();
        m_isInitialised = true;
    }

private:
    const kv::DesignerControl& m_control;
    bool m_isInitialised = false;
};

} // namespace

KvDesignerPlugin::KvDesignerPlugin()
{
    for (const kv::DesignerControl& control : kv::DesignerControls())
        m_widgets.push_back(std::make_unique<ControlInterface>(control));
}

KvDesignerPlugin::~KvDesignerPlugin() = default;

QList<QDesignerCustomWidgetInterface*> KvDesignerPlugin::customWidgets() const
{
    QList<QDesignerCustomWidgetInterface*> widgets;
    for (const auto& widget : m_widgets)
        widgets << widget.get();
    return widgets;
}
