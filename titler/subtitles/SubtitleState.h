// The subtitle workspace's rows with all that belongs to them, as a plain value.
#pragma once

#include "KvVideoFormat.h"
#include "subtitles/SubtitleSource.h"

#include <QString>

#include <memory>
#include <vector>

class QJsonObject;

namespace titler {

struct SubtitleState
{
    struct Row
    {
        QString text;
        DWORD in = 0; ///< frames at `rate`, or the list's "none"
        DWORD out = 0;
        QString templateName;
        SubtitleSource::Row source;
    };

    QString file; ///< where the rows came from; may be empty
    bool isModified = false;
    EKvFrameRate rate = kKvFrameRate25;
    SubtitleSource source;                        ///< without its rows
    std::vector<std::shared_ptr<const Row>> rows; ///< none is null; shared, so that a copy costs little
};

/// May run in any thread.
QJsonObject SubtitlesToJson(const SubtitleState& state);
/// What is missing or out of range is taken for its default.
SubtitleState SubtitlesFromJson(const QJsonObject& json);

} // namespace titler
