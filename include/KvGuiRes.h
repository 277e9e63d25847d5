// The resource layer: colours and pictures by key, texts by number, menus by number or name.
// A host overlays its own skin folder and its own texts; both reach every live control at once.
// For the user-interface thread only.
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
    KvSkinImage();
    ~KvSkinImage();
    KvSkinImage(const KvSkinImage&);
    KvSkinImage& operator=(const KvSkinImage&);

    bool IsNull() const;
    /// Natural size in logical pixels.
    QSize Size() const;
    /// Draws the picture into a rectangle of the painter's coordinates.
    void Draw(Graphics& graphics, const QRectF& target) const;
    /// @param size in logical pixels. @param pixelRatio the pixmap's device pixel ratio.
    QPixmap Pixmap(QSize size, qreal pixelRatio) const;

private:
    friend class KvGuiRes;
    struct Data;
    std::shared_ptr<const Data> m_data;
};

/// A text of a host's own string table.
struct KvStringEntry
{
    UINT number;
    const wchar_t* text;
};

/// Makes a menu at each opening.
using KvMenuFactory = std::function<std::unique_ptr<QMenu>()>;

class KV_API KvGuiRes
{
public:
    /// Looks a theme colour (0xAARRGGBB) up. A missing key leaves `colour` alone. @return 1 when found.
    static int LoadColor(const wchar_t* key, DWORD& colour);
    /// Looks a picture up by its name; an ending ".svg" or ".png" does not count. @return a null picture when
    /// there is none.
    static KvSkinImage LoadImageW(const wchar_t* name);
    /// The text with that number in the string table; empty when there is none.
    static std::wstring LoadStringW(UINT number);
    /// The text of a tool tip; empty when there is none.
    static std::wstring LoadTip(UINT number);
    /// The text of a dialog item; empty when there is none.
    static std::wstring LoadDialogText(UINT dialog, UINT item);
    /// The text of a menu item; empty when there is none.
    static std::wstring LoadMenuText(UINT menu, UINT command);

    /// Adds a host's own texts to the string table, so that `LoadStringW` finds them and a string file can
    /// translate them. The texts are copied. A number that exists is replaced; 50000 and above is never the
    /// library's.
    /// @return 1; 0, with nothing added, when `entries` or one of its texts is null.
    static int AddStrings(const KvStringEntry* entries, std::size_t count);

    /// Overlays a skin folder over the built-in skin: `skin.ini` (section "Colors", lines `key = R,G,B,A` in
    /// decimal) and pictures by name, `.svg` before `.png`. Null or empty removes the overlay. Lines that
    /// cannot be read are skipped.
    /// @return 1; 0, with the skin unchanged, when the folder does not exist or `skin.ini` cannot be read.
    static int SetSkinFolder(const wchar_t* folder);
    /// Overlays texts from a profile file with the sections "Strings" (`7022 = …`), "Menus"
    /// (`12002.32772 = …`), "Dialogs" (`12016.12077 = …`; `12016.0` is the title, items without a number
    /// count down from `12016.65535`) and "Tips" (`15000 = …`). Null or empty removes the overlay. In a text
    /// `\n`, `\r`, `\t` and `\\` stand for a line break, a carriage return, a tab and a backslash.
    /// Placeholders (%s, %d, %.1f) are filled in order; `%2$s` names the second value where the language
    /// wants another one. A missing or empty text falls back to the built-in one.
    /// @return 1; 0, with the texts unchanged, when the file cannot be read.
    static int SetStringFile(const wchar_t* file);

    /// Adds a menu by name, or replaces it; an empty factory removes it.
    static void RegisterMenu(const wchar_t* name, KvMenuFactory factory);
    /// Makes the menu registered under a name; null when there is none.
    static std::unique_ptr<QMenu> CreateMenuByName(const wchar_t* name);

private:
    static void NotifyWindows();
};
