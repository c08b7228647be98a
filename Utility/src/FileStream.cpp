#include "Utility/src/FileStream.h"

FileStreamBuffer::int_type FileStreamBuffer::overflow(int_type character) {
    if (traits_type::eq_int_type(character, traits_type::eof()))
        return traits_type::not_eof(character);
    const char text = traits_type::to_char_type(character);
    return xsputn(&text, 1) == 1 ? character : traits_type::eof();
}

std::streamsize FileStreamBuffer::xsputn(const char* text, std::streamsize length) {
    return Platform::WriteToFile(m_file, {text, static_cast<std::size_t>(length)}) ? length : 0;
}

FileStream::FileStream(const std::string& path, bool append)
    : FileStream(Platform::OpenFile(path, append ? Platform::Access::Append
                                                 : Platform::Access::Truncate)) {}

FileStream::FileStream(Platform::FileHandle file) : std::ostream(nullptr), m_buffer(file) {
    rdbuf(&m_buffer);
    if (file == Platform::kNoFile)
        setstate(std::ios_base::badbit);
}
