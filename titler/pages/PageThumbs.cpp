#include "pages/PageThumbs.h"

#include "project/Pages.h"
#include "title/TitleRenderer.h"

#include <QHash>
#include <QPainter>
#include <QThread>

#include <algorithm>
#include <new>
#include <utility>

namespace titler {

/// What a picture shows; threads read it, and nobody changes it.
struct PageThumbs::Look
{
    Look(const Page& page, const Project& project)
        : title(page.title)
        , background(page.background)
        , video(project.video)
        , frame(MiddleFrame(page.title, project.duration))
        , values(ValuesAt(title.properties, frame))
    {
    }

    bool IsOf(const Page& page, const Project& project) const
    {
        return title.text == page.title.text && LooksSame(background, page.background) &&
               LooksSame(title, page.title) && IsIn(project);
    }
    /// Whether the page still looks so when only the project around it may have changed.
    bool IsIn(const Project& project) const
    {
        const int shown = MiddleFrame(title, project.duration);
        return DisplaySize(video) == DisplaySize(project.video) &&
               (frame == shown || values == ValuesAt(title.properties, shown));
    }

    Title title;
    Paint background;
    SKvVideoResolution video;
    int frame;
    std::array<double, kProperties> values;
};

struct PageThumbs::Thumb
{
    std::shared_ptr<const Look> look;
    QImage picture; ///< perhaps of another size, or of the page before an edit
    QSize drawn;    ///< the size in which the look was drawn; it stays without a picture when memory is short
    QSize drawing;  ///< in which a thread draws it
};

namespace {

constexpr int kChecks = 10; // in a picture's height

void FillChecks(QImage& picture, QRgb light, QRgb dark)
{
    const int check = std::max(2, picture.height() / kChecks);
    for (int y = 0; y < picture.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < picture.width(); ++x)
            row[x] = (x / check + y / check) % 2 == 0 ? dark : light;
    }
}

QImage Drawn(const Page& page, const SKvVideoResolution& video, int frame, QSize size, QRgb light, QRgb dark)
try {
    Project project;
    static_cast<Page&>(project) = page;
    project.video = video;
    const QImage title = TitleRenderer().RenderFrame(project, frame, size);
    if (title.isNull() || !title.hasAlphaChannel())
        return title.convertToFormat(QImage::Format_ARGB32);
    QImage picture(size, QImage::Format_ARGB32);
    if (picture.isNull())
        return picture;
    FillChecks(picture, light, dark);
    QPainter(&picture).drawImage(0, 0, title);
    return picture;
} catch (const std::bad_alloc&) {
    return {};
}

} // namespace

PageThumbs::PageThumbs(QColor light, QColor dark) : m_light(light.rgb()), m_dark(dark.rgb())
{
    m_pool.setMaxThreadCount(std::max(1, QThread::idealThreadCount() - 1)); // one is the window's
}

PageThumbs::~PageThumbs()
{
    m_pool.clear();
    m_pool.waitForDone();
}

void PageThumbs::Forget()
{
    m_slots.clear();
    m_wanted.clear();
    m_current = -1;
}

// First where it stood, which is nearly always so.
PageThumbs::ThumbRef PageThumbs::Alike(const std::vector<Slot>& before, int index, const Page& page,
                                       const Project& project) const
{
    const auto isAlike = [&](const Slot& slot) { return slot.thumb->look->IsOf(page, project); };
    const auto place = static_cast<std::size_t>(index);
    if (place < before.size() && isAlike(before[place]))
        return before[place].thumb;
    const auto found = std::find_if(before.begin(), before.end(), isAlike);
    return found == before.end() ? nullptr : found->thumb;
}

QList<int> PageThumbs::SetPages(const Project& project)
{
    const std::vector<Slot> before = std::exchange(m_slots, {});
    const int current = std::exchange(m_current, project.pageIndex);
    const int count = PageCount(project);
    const bool isInPlace = current == m_current && static_cast<int>(before.size()) == count;
    const bool isSameShape =
        !before.empty() && DisplaySize(before.front().thumb->look->video) == DisplaySize(project.video);
    QHash<const Page*, ThumbRef> known;
    for (const Slot& slot : before)
        if (slot.page)
            known.insert(slot.page.get(), slot.thumb);
    QList<int> changed;
    for (int index = 0; index < count; ++index) {
        Slot slot;
        if (index != m_current)
            slot.page = project.otherPages[index < m_current ? index : index - 1];
        const Page& page = PageAt(project, index);
        const auto place = static_cast<std::size_t>(index);
        const ThumbRef same = slot.page ? known.value(slot.page.get()) : nullptr;
        slot.thumb = same && same->look->IsIn(project) ? same
                     : isSameShape                     ? Alike(before, index, page, project)
                                                       : nullptr;
        if (!slot.thumb) {
            slot.thumb = std::make_shared<Thumb>(Thumb{std::make_shared<Look>(page, project), {}, {}, {}});
            if (isInPlace && index == m_current)
                slot.thumb->picture = before[place].thumb->picture; // of the page before the edit
        }
        if (place >= before.size() || before[place].thumb != slot.thumb)
            changed << index;
        m_slots.push_back(std::move(slot));
    }
    return changed;
}

QImage PageThumbs::Get(int index, QSize size)
{
    if (index < 0 || index >= static_cast<int>(m_slots.size()) || size.isEmpty())
        return {};
    m_size = size;
    const ThumbRef& thumb = m_slots[static_cast<std::size_t>(index)].thumb;
    if (thumb->drawn != size && thumb->drawing != size) {
        m_wanted.erase(std::remove(m_wanted.begin(), m_wanted.end(), thumb), m_wanted.end());
        m_wanted.push_back(thumb);
        StartNext();
    }
    return thumb->picture;
}

int PageThumbs::IndexOf(const ThumbRef& thumb) const
{
    const auto found =
        std::find_if(m_slots.begin(), m_slots.end(), [&](const Slot& slot) { return slot.thumb == thumb; });
    return found == m_slots.end() ? -1 : static_cast<int>(found - m_slots.begin());
}

// What is no page's any more, is drawn already or is being drawn is not wanted.
PageThumbs::ThumbRef PageThumbs::TakeNext()
{
    m_wanted.erase(std::remove_if(m_wanted.begin(), m_wanted.end(),
                                  [this](const ThumbRef& thumb) {
                                      return thumb->drawn == m_size || thumb->drawing == m_size ||
                                             IndexOf(thumb) < 0;
                                  }),
                   m_wanted.end());
    if (m_wanted.empty())
        return nullptr;
    const auto seen = std::find_if(m_wanted.rbegin(), m_wanted.rend(), [this](const ThumbRef& thumb) {
        return m_isInView && m_isInView(IndexOf(thumb));
    });
    const auto next = seen == m_wanted.rend() ? std::prev(m_wanted.end()) : std::prev(seen.base());
    ThumbRef thumb = *next;
    m_wanted.erase(next);
    return thumb;
}

void PageThumbs::StartNext()
{
    while (m_running < m_pool.maxThreadCount()) {
        const ThumbRef thumb = TakeNext();
        if (!thumb)
            return;
        ++m_running;
        thumb->drawing = m_size;
        m_pool.start([this, thumb, look = thumb->look, size = m_size] {
            QImage picture =
                Drawn({look->title, look->background}, look->video, look->frame, size, m_light, m_dark);
            QMetaObject::invokeMethod(
                this, [this, thumb, size, picture] { OnDrawn(thumb, size, picture); }, Qt::QueuedConnection);
        });
    }
}

void PageThumbs::OnDrawn(const ThumbRef& thumb, QSize size, QImage picture)
{
    --m_running;
    if (thumb->drawing == size) // else another thread draws it by now
        thumb->drawing = {};
    const int first = size == m_size ? IndexOf(thumb) : -1;
    if (first >= 0) { // else it shows what was there before
        ++m_drawn;
        thumb->drawn = size;
        thumb->picture = std::move(picture);
    }
    StartNext();
    for (int index = std::max(first, 0); first >= 0 && index < static_cast<int>(m_slots.size()); ++index)
        if (m_slots[static_cast<std::size_t>(index)].thumb == thumb)
            emit Changed(index);
}

} // namespace titler
