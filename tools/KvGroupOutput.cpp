#include "tools/KvGroupOutput.h"

#include "tools/KvGroupSystem.h"

#include <cerrno>
#include <cstddef>

namespace kv {
namespace {

constexpr std::size_t kPiece = std::size_t{1} << 16;

} // namespace

void OutputStream::Write(std::string_view text)
{
    m_text += text;
    if (m_text.size() >= kPiece)
        WriteOut();
}

void OutputStream::WriteOut()
{
    if (m_error == 0)
        m_error = WriteText(m_file, m_text);
    m_text.clear();
}

int OutputStream::Finish()
{
    WriteOut();
    errno = 0;
    if (m_error == 0 && std::fflush(m_file) != 0)
        m_error = errno != 0 ? errno : EIO;
    return m_error;
}

} // namespace kv
