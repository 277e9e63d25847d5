/// @file
/// The resource layer: colours and pictures by key, texts by number, menus by number or name.
/// A host overlays its own skin folder and its own texts; both reach every live control at once.
/// For the user-interface thread only.
#pragma once

#include "KvPlatform.h"

#include <QPixmap>

#include <cstddef>
#include <functional>
#include <memory>

/// A picture of the skin; a light value. SVG pictures are drawn for the target's pixel ratio.
class KV_API KvSkinImage
{
public:
    /// A null picture.
    KvSkinImage();
    ~KvSkinImage();
    /// Shares the picture.
    KvSkinImage(const KvSkinImage&);
    /// Shares the picture. @return this one.
    KvSkinImage& operator=(const KvSkinImage&);

    /// @return true when the skin has no such picture; it draws nothing then.
    bool IsNull() const;
    /// @return the natural size in logical pixels; empty for a null picture.
    QSize Size() const;
    /// Draws the picture into a rectangle of the painter's coordinates. @param graphics the painter.
    /// @param target stretched to its width and height.
    void Draw(Graphics& graphics, const QRectF& target) const;
    /// @param size in logical pixels. @param pixelRatio the pixmap's device pixel ratio.
    /// @return the picture, stretched to that size; a null one for a null picture and an empty size.
    QPixmap Pixmap(QSize size, qreal pixelRatio) const;

private:
    friend class KvGuiRes;
    struct Data;
    std::shared_ptr<const Data> m_data;
};

/// A text of a host's own string table.
struct KvStringEntry
{
    UINT number;         ///< 50000 and above is never the library's
    const wchar_t* text; ///< ends with a zero
};

/// Makes a menu at each opening.
using KvMenuFactory = std::function<std::unique_ptr<QMenu>()>;

/// The light skin that the library carries beside its dark one, for `KvGuiRes::SetSkinFolder`.
inline constexpr wchar_t kKvLightSkin[] = L":/kv/skin/light";

/// The resource layer. All operations are static; what they look up is the same for the whole process.
class KV_API KvGuiRes
{
public:
    /// Looks a theme colour up. @param key its name, such as "keFocusColor".
    /// @param colour receives 0xAARRGGBB; a missing key leaves it alone. @return 1 when found, else 0.
    static int LoadColor(const wchar_t* key, DWORD& colour);
    /// Looks a picture up. @param name an ending ".svg" or ".png" does not count.
    /// @return a null picture when there is none.
    static KvSkinImage LoadImageW(const wchar_t* name);
    /// @param number of the string table. @return the text; empty when there is none.
    static std::wstring LoadStringW(UINT number);
    /// @param number of the tool tip. @return the text; empty when there is none.
    static std::wstring LoadTip(UINT number);
    /// @param dialog the template's number. @param item the item's; 0 is the title.
    /// @return the text; empty when there is none.
    static std::wstring LoadDialogText(UINT dialog, UINT item);
    /// @param menu the menu's number. @param command the item's. @return the text; empty when there is none.
    static std::wstring LoadMenuText(UINT menu, UINT command);

    /// Adds a host's own texts to the string table, so that `LoadStringW` finds them and a string file can
    /// translate them. The texts are copied. A number that exists is replaced; 50000 and above is never the
    /// library's.
    /// @param entries may be gone afterwards. @param count how many.
    /// @return 1; 0, with nothing added, when `entries` or one of its texts is null.
    static int AddStrings(const KvStringEntry* entries, std::size_t count);

    /// Overlays a skin folder over the built-in, dark skin: `skin.ini` and pictures by name, `.svg` before
    /// `.png`. Null or empty removes the overlay. The file's section "Colors" has lines `key = R,G,B,A` in
    /// decimal; its section "Pictures" (lines `rrggbb = rrggbb`, hexadecimal) says which colours stand for
    /// those of the built-in SVG pictures; the folder's own are drawn as they are. Lines that cannot be read
    /// are skipped.
    /// @param folder of the file system or of the program's resources (":/…"), for example `kKvLightSkin`.
    /// @return 1; 0, with the skin unchanged, when the folder does not exist or `skin.ini` cannot be read.
    static int SetSkinFolder(const wchar_t* folder);
    /// Overlays texts from a profile file with the sections "Strings" (`7022=…`), "Menus"
    /// (`12002.32772=…`), "Dialogs" (`12016.12077=…`; `12016.0` is the title, items without a number
    /// count down from `12016.65535`) and "Tips" (`15000=…`). Null or empty removes the overlay. In a text
    /// `\n`, `\r`, `\t` and `\\` stand for a line break, a carriage return, a tab and a backslash.
    /// Placeholders (%s, %d, %.1f) are filled in order; `%2$s` names the second value where the language
    /// wants another one. A missing or empty text falls back to the built-in one.
    /// The application object is then sent `QEvent::LanguageChange`, which posts it to all windows of the
    /// host as it does for a `QTranslator`.
    /// @param file a path, or the name of a resource (":/..."). The library's own translations are
    ///        ":/kv/lang/de.ini" and, likewise, "ar", "es", "fr", "ja" and "zh".
    /// @return 1; 0, with the texts unchanged, when the file cannot be read.
    static int SetStringFile(const wchar_t* file);

    /// Adds a menu by name, or replaces it.
    /// @param name any text. @param factory makes it; an empty one takes the name away.
    static void RegisterMenu(const wchar_t* name, KvMenuFactory factory);
    /// Makes the menu registered under a name. @param name any text. @return null when there is none.
    static std::unique_ptr<QMenu> CreateMenuByName(const wchar_t* name);

private:
    static void NotifyWindows();
};
