#pragma once
// Texts cross between the core (Latin-1 bytes) and Qt (QString) only here.

#include <QString>

#include <string>
#include <string_view>

namespace rw::ui {

inline QString fromCore(std::string_view latin1)
{
    return QString::fromLatin1(latin1.data(), static_cast<qsizetype>(latin1.size()));
}

inline std::string toCore(const QString& s)
{
    const QByteArray b = s.toLatin1();
    return std::string(b.constData(), static_cast<std::size_t>(b.size()));
}

// File names stay UTF-8 on disk.
inline QString fromPath(const std::string& utf8)
{
    return QString::fromStdString(utf8);
}

inline std::string toPath(const QString& s)
{
    return s.toStdString();
}

}  // namespace rw::ui
