// The plugin for Qt Designer tells the truth, and forms that hold the controls are loaded and compiled.
#include "tests/designer/Controls.h"
#include "tests/designer/Properties.h"
#include "ui_all.h"

#include <QApplication>
#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QPluginLoader>
#include <QUiLoader>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <set>

namespace {

QString PluginFile()
{
    return QString::fromUtf8(KV_DESIGNER_PLUGIN);
}

std::unique_ptr<QWidget> Load(QIODevice& form)
{
    QUiLoader loader;
    loader.addPluginPath(QFileInfo(PluginFile()).path());
    std::unique_ptr<QWidget> widget(loader.load(&form));
    EXPECT_NE(widget, nullptr) << loader.errorString().toStdString();
    return widget;
}

std::map<std::string, QDesignerCustomWidgetInterface*> Widgets()
{
    QPluginLoader loader(PluginFile());
    auto* collection = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(loader.instance());
    EXPECT_NE(collection, nullptr) << loader.errorString().toStdString();
    std::map<std::string, QDesignerCustomWidgetInterface*> widgets;
    for (QDesignerCustomWidgetInterface* widget :
         collection ? collection->customWidgets() : QList<QDesignerCustomWidgetInterface*>())
        widgets[widget->name().toStdString()] = widget;
    return widgets;
}

bool HasOpaquePixel(const QIcon& icon)
{
    const QImage image = icon.pixmap(24, 24).toImage().convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).alpha() == 255)
                return true;
        }
    }
    return false;
}

TEST(DesignerPlugin, OffersEveryControlTruly)
{
    const auto widgets = Widgets();
    EXPECT_EQ(widgets.size(), std::size(kControlKinds));
    std::set<QString> tips;
    for (const ControlKind& kind : kControlKinds) {
        SCOPED_TRACE(kind.name);
        const auto found = widgets.find(kind.name);
        ASSERT_NE(found, widgets.end());
        QDesignerCustomWidgetInterface& widget = *found->second;
        QWidget parent;
        QWidget* const control = widget.createWidget(&parent);
        EXPECT_STREQ(control->metaObject()->className(), kind.name);
        EXPECT_EQ(control->parentWidget(), &parent);
        EXPECT_EQ(widget.group(), "Kv Controls");
        EXPECT_FALSE(widget.isContainer());
        EXPECT_TRUE(tips.insert(widget.toolTip()).second) << "another control's";
        EXPECT_GT(widget.whatsThis().size(), widget.toolTip().size());
        EXPECT_TRUE(HasOpaquePixel(widget.icon()));
        EXPECT_FALSE(widget.icon().availableSizes().isEmpty()) << "Designer shows another one then";

        QFile header(QStringLiteral(KV_INCLUDE_FOLDER "/") + widget.includeFile());
        ASSERT_TRUE(header.open(QIODevice::ReadOnly)) << widget.includeFile().toStdString();
        EXPECT_TRUE(header.readAll().contains("class KV_API " + QByteArray(kind.name) + " "));
    }
}

// The loader takes a plain widget, without a word, for a class that it does not know.
TEST(DesignerPlugin, TheFormOfANewControlLoads)
{
    for (const auto& [name, widget] : Widgets()) {
        SCOPED_TRACE(name);
        QByteArray text = widget->domXml().toUtf8();
        QBuffer form(&text);
        ASSERT_TRUE(form.open(QIODevice::ReadOnly));
        const std::unique_ptr<QWidget> control = Load(form);
        ASSERT_NE(control, nullptr);
        EXPECT_EQ(control->metaObject()->className(), name);
        EXPECT_FALSE(control->objectName().isEmpty());
        for (const QByteArray& property : control->dynamicPropertyNames()) {
            EXPECT_TRUE(property.startsWith("_q_kv")) << property.constData() << " is unknown to the class";
        }
        const QSize size = control->size();
        control->show();
        QApplication::processEvents();
        EXPECT_TRUE(IsControlCreated(*control));
        EXPECT_EQ(control->size(), size) << "a new one is at least as large as it needs to be";
        for (int at = 0; (at = static_cast<int>(text.indexOf("specification name=\"", at))) >= 0; ++at) {
            const QByteArray property = text.mid(at + 20, text.indexOf('"', at + 20) - at - 20);
            EXPECT_GE(control->metaObject()->indexOfProperty(property), 0) << property.constData();
        }
    }
}

void ExpectAllControls(QWidget& form)
{
    const auto expectValues = [&form](const char* when) {
        for (const PropertyValue& value : kPropertyValues) {
            const QWidget* control = nullptr;
            for (const QWidget* widget : form.findChildren<QWidget*>()) {
                if (widget->metaObject()->className() == std::string(value.control) &&
                    !widget->objectName().isEmpty())
                    control = widget;
            }
            ASSERT_NE(control, nullptr) << value.control;
            EXPECT_EQ(control->property(value.property).toString(), value.value)
                << value.control << "::" << value.property << when;
            EXPECT_GT(control->property("itemId").toUInt(), 2000u) << value.control;
        }
    };
    expectValues(" before it is shown");
    form.show();
    QApplication::processEvents();
    expectValues(" once it is shown");
    for (const ControlKind& kind : kControlKinds) {
        for (QWidget* widget : form.findChildren<QWidget*>()) {
            if (widget->metaObject()->className() != std::string(kind.name) || widget->objectName().isEmpty())
                continue;
            EXPECT_TRUE(IsControlCreated(*widget)) << kind.name;
            EXPECT_TRUE(widget->isVisible()) << kind.name;
            EXPECT_TRUE(widget->parentWidget()->rect().contains(widget->geometry())) << kind.name;
        }
    }
}

TEST(AllControlsForm, IsLoaded)
{
    QFile file(QStringLiteral(KV_ALL_CONTROLS));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const std::unique_ptr<QWidget> form = Load(file);
    ASSERT_NE(form, nullptr);
    ExpectAllControls(*form);
}

TEST(AllControlsForm, IsCompiled)
{
    QWidget form;
    Ui::AllControls ui;
    ui.setupUi(&form);
    EXPECT_EQ(ui.gradientCtrl->GetDlgCtrlID(), KvGetDlgItemId(ui.gradientCtrl));
    ExpectAllControls(form);
}

} // namespace
