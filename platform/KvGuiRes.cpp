#include "KvGuiRes.h"

#include "KvDialog.h"
#include "KvScroll.h"
#include "KvWnd.h"
#include "core/ProfileDocument.h"
#include "core/TextTables.h"
#include "core/WholeFile.h"
#include "platform/LanguageChange.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMenu>
#include <QPointer>
#include <QSvgRenderer>

#include <algorithm>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

using ColourTable = std::unordered_map<std::wstring, DWORD>;

// "R,G,B,A" in decimal, blanks allowed around the numbers.
std::optional<DWORD> ParseColour(std::wstring_view text)
{
    const QStringList parts = KvToQString(text).split(u',');
    if (parts.size() != 4)
        return std::nullopt;
    DWORD channels[4];
    for (int i = 0; i < 4; ++i) {
        bool isNumber = false;
        channels[i] = parts[i].trimmed().toUInt(&isNumber);
        if (!isNumber || channels[i] > 255)
            return std::nullopt;
    }
    return channels[3] << 24 | channels[0] << 16 | channels[1] << 8 | channels[2];
}

ColourTable ReadColours(const kv::ProfileDocument& document)
{
    ColourTable colours;
    for (const auto& [key, value] : document.Section(L"Colors")) {
        if (const std::optional<DWORD> colour = ParseColour(value))
            colours.emplace(key, *colour);
    }
    return colours;
}

// Six hexadecimal digits, as a picture has them.
using PictureColours = std::unordered_map<std::string, QByteArray>;

PictureColours ReadPictureColours(const kv::ProfileDocument& document)
{
    const auto isColour = [](const QByteArray& text) {
        return text.size() == 6 && std::all_of(text.begin(), text.end(), [](char digit) {
                   return (digit >= '0' && digit <= '9') || (digit >= 'a' && digit <= 'f');
               });
    };
    PictureColours colours;
    for (const auto& [key, value] : document.Section(L"Pictures")) {
        const QByteArray from = KvToQString(key).trimmed().toLower().toLatin1();
        const QByteArray to = KvToQString(value).trimmed().toLower().toLatin1();
        if (isColour(from) && isColour(to))
            colours.emplace(from.toStdString(), to);
    }
    return colours;
}

// Each colour once: what one became is not looked up again.
void Recolour(QByteArray& svg, const PictureColours& colours)
{
    for (qsizetype at = svg.indexOf('#'); at >= 0; at = svg.indexOf('#', at + 1)) {
        const auto found = colours.find(svg.mid(at + 1, 6).toLower().toStdString());
        if (found != colours.end())
            svg.replace(at + 1, 6, found->second);
    }
}

struct Skin
{
    ColourTable builtIn;
    ColourTable overlay;
    PictureColours pictureColours; // of the built-in pictures, under the overlay
    QString overlayFolder;
    std::unordered_map<std::wstring, KvSkinImage> images; // also null ones: a missing name is asked once
    std::unordered_map<std::wstring, KvMenuFactory> menus;
};

// Also from a program's resources.
std::optional<std::string> ReadIni(const QString& name)
{
    if (!name.startsWith(u':'))
        return kv::ReadWholeFile(KvFromQString(name), nullptr, kv::ProfileDocument::kMostBytes);
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? std::optional(file.readAll().toStdString()) : std::nullopt;
}

// Pictures and menus of a host must not outlive the application object.
void ForgetHostResources();

Skin& TheSkin()
{
    static Skin skin = [] {
        qAddPostRoutine(ForgetHostResources);
        Skin first;
        QFile file(QStringLiteral(":/kv/skin/skin.ini"));
        if (file.open(QIODevice::ReadOnly))
            first.builtIn = ReadColours(kv::ProfileDocument(file.readAll().toStdString()));
        return first;
    }();
    return skin;
}

void ForgetHostResources()
{
    TheSkin().images.clear();
    TheSkin().menus.clear();
}

// Names are looked up without their ending; some of the field's keys carry one.
QString WithoutEnding(const QString& name)
{
    for (const char* ending : {".svg", ".png"}) {
        if (name.endsWith(QLatin1String(ending), Qt::CaseInsensitive))
            return name.chopped(4);
    }
    return name;
}

bool IsResource(const std::wstring& file)
{
    return file.starts_with(L":/");
}

bool ReadTextResource(const std::wstring& name)
{
    QFile file(KvToQString(name));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    kv::SetTextOverlayBytes(file.readAll().toStdString());
    return true;
}

// A name is a plain file name: an overlay cannot reach out of its folder.
bool IsPlainName(const QString& name)
{
    return !name.isEmpty() && !name.contains(u'/') && !name.contains(u'\\');
}

} // namespace

struct KvSkinImage::Data
{
    // Reads the picture of a name; null when there is none or it is broken.
    static std::shared_ptr<const Data> Read(const QString& folder, const QString& name,
                                            const PictureColours& colours);

    std::shared_ptr<QSvgRenderer> vector;
    QImage raster;
    mutable QPixmap cached; // the size and ratio asked for last
    mutable QSize cachedSize;
};

std::shared_ptr<const KvSkinImage::Data> KvSkinImage::Data::Read(const QString& folder, const QString& name,
                                                                 const PictureColours& colours)
{
    const QString path = folder + u'/' + name;
    auto data = std::make_shared<Data>();
    if (QFile file(path + QLatin1String(".svg")); file.open(QIODevice::ReadOnly)) {
        QByteArray svg = file.readAll();
        Recolour(svg, colours);
        data->vector = std::make_shared<QSvgRenderer>(svg);
        if (data->vector->isValid())
            return data;
        data->vector.reset();
    }
    return data->raster.load(path + QLatin1String(".png")) ? data : nullptr;
}

KvSkinImage::KvSkinImage() = default;
KvSkinImage::~KvSkinImage() = default;
KvSkinImage::KvSkinImage(const KvSkinImage&) = default;
KvSkinImage& KvSkinImage::operator=(const KvSkinImage&) = default;

bool KvSkinImage::IsNull() const
{
    return !m_data;
}

QSize KvSkinImage::Size() const
{
    if (!m_data)
        return {};
    return m_data->vector ? m_data->vector->defaultSize() : m_data->raster.size();
}

void KvSkinImage::Draw(Graphics& graphics, const QRectF& target) const
{
    if (!m_data || target.isEmpty())
        return;
    if (m_data->vector) {
        m_data->vector->render(&graphics, target);
        return;
    }
    const bool smooth = graphics.testRenderHint(QPainter::SmoothPixmapTransform);
    graphics.setRenderHint(QPainter::SmoothPixmapTransform);
    graphics.drawImage(target, m_data->raster);
    graphics.setRenderHint(QPainter::SmoothPixmapTransform, smooth);
}

QPixmap KvSkinImage::Pixmap(QSize size, qreal pixelRatio) const
{
    if (!m_data || size.isEmpty() || pixelRatio <= 0)
        return {};
    const bool isCached = !m_data->cached.isNull() && m_data->cachedSize == size &&
                          qFuzzyCompare(m_data->cached.devicePixelRatio(), pixelRatio);
    if (!isCached) {
        QPixmap pixmap((QSizeF(size) * pixelRatio).toSize());
        pixmap.setDevicePixelRatio(pixelRatio);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        Draw(painter, QRectF(QPointF(0, 0), QSizeF(size)));
        m_data->cached = pixmap;
        m_data->cachedSize = size;
    }
    return m_data->cached;
}

int KvGuiRes::LoadColor(const wchar_t* key, DWORD& colour)
{
    if (!key)
        return 0;
    const Skin& skin = TheSkin();
    for (const ColourTable* table : {&skin.overlay, &skin.builtIn}) {
        if (const auto found = table->find(key); found != table->end()) {
            colour = found->second;
            return 1;
        }
    }
    return 0;
}

KvSkinImage KvGuiRes::LoadImageW(const wchar_t* name)
{
    const QString plainName = name ? WithoutEnding(KvToQString(name)) : QString();
    if (!IsPlainName(plainName))
        return {};
    Skin& skin = TheSkin();
    if (const auto found = skin.images.find(name); found != skin.images.end())
        return found->second;
    KvSkinImage image;
    // A broken picture of an overlay falls back to the built-in one.
    if (!skin.overlayFolder.isEmpty())
        image.m_data = KvSkinImage::Data::Read(skin.overlayFolder, plainName, {});
    if (!image.m_data)
        image.m_data = KvSkinImage::Data::Read(QStringLiteral(":/kv/skin"), plainName, skin.pictureColours);
    skin.images.emplace(name, image);
    return image;
}

std::wstring KvGuiRes::LoadStringW(UINT number)
{
    return kv::LoadText(number);
}

int KvGuiRes::AddStrings(const KvStringEntry* entries, std::size_t count)
{
    if (!entries || std::any_of(entries, entries + count, [](const auto& entry) { return !entry.text; }))
        return 0;
    for (std::size_t i = 0; i < count; ++i)
        kv::AddText(entries[i].number, entries[i].text);
    return 1;
}

std::wstring KvGuiRes::LoadTip(UINT number)
{
    return kv::LoadText(kv::TextKind::Tip, 0, number);
}

std::wstring KvGuiRes::LoadDialogText(UINT dialog, UINT item)
{
    return kv::LoadText(kv::TextKind::Dialog, dialog, item);
}

std::wstring KvGuiRes::LoadMenuText(UINT menu, UINT command)
{
    return kv::LoadText(kv::TextKind::Menu, menu, command);
}

int KvGuiRes::SetSkinFolder(const wchar_t* folder)
{
    QString path = folder ? KvToQString(folder) : QString();
    ColourTable colours;
    PictureColours pictureColours;
    if (!path.isEmpty()) {
        if (!QFileInfo(path).isDir())
            return 0;
        path = QDir(path).absolutePath(); // pictures are looked up later, from wherever the process is then
        const QString ini = path + QStringLiteral("/skin.ini");
        // A skin of pictures only needs no skin.ini.
        if (QFileInfo::exists(ini)) {
            const auto bytes = ReadIni(ini);
            if (!bytes)
                return 0;
            const kv::ProfileDocument document(*bytes);
            colours = ReadColours(document);
            pictureColours = ReadPictureColours(document);
        }
    }
    Skin& skin = TheSkin();
    skin.overlay = std::move(colours);
    skin.pictureColours = std::move(pictureColours);
    skin.overlayFolder = std::move(path);
    skin.images.clear();
    NotifyWindows();
    return 1;
}

int KvGuiRes::SetStringFile(const wchar_t* file)
{
    const std::wstring name = file ? file : L"";
    if (!(IsResource(name) ? ReadTextResource(name) : kv::SetTextOverlay(name)))
        return 0;
    NotifyWindows();
    // As the toolkit does for a translator: hosts hear of both in one place.
    kv::SendLanguageChange();
    return 1;
}

void KvGuiRes::NotifyWindows()
{
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return;
    // A handler may delete other windows.
    std::vector<QPointer<QWidget>> widgets;
    for (QWidget* widget : QApplication::allWidgets())
        widgets.emplace_back(widget);
    for (const QPointer<QWidget>& widget : widgets) {
        if (auto* window = qobject_cast<CKvWnd*>(widget))
            window->OnSkinChanged();
        else if (auto* dialog = qobject_cast<CKvDialog*>(widget))
            dialog->OnSkinChanged();
        else if (auto* bar = qobject_cast<CKvScrollBar*>(widget))
            bar->LoadSkin();
        if (!widget)
            continue;
        widget->updateGeometry(); // a picture or a text may be larger
        widget->update();         // buttons look their pictures up when they paint
    }
}

void KvGuiRes::RegisterMenu(const wchar_t* name, KvMenuFactory factory)
{
    if (!name)
        return;
    if (factory)
        TheSkin().menus.insert_or_assign(name, std::move(factory));
    else
        TheSkin().menus.erase(name);
}

std::unique_ptr<QMenu> KvGuiRes::CreateMenuByName(const wchar_t* name)
{
    if (!name)
        return nullptr;
    const auto found = TheSkin().menus.find(name);
    if (found == TheSkin().menus.end())
        return nullptr;
    // A copy: the factory may register menus itself.
    const KvMenuFactory factory = found->second;
    return factory();
}
