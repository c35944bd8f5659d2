#pragma once

#include <QByteArray>
#include <QTemporaryDir>

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace Harness {

/// A folder that is gone with the test.
class Folder {
public:
    Folder() { EXPECT_TRUE(m_folder.isValid()); }

    std::filesystem::path path() const { return m_folder.path().toStdString(); }
    std::filesystem::path pathOf(const std::string& name) const { return path() / name; }

    /// Lays a file down and answers its path.
    std::filesystem::path fileWith(
        const QByteArray& bytes, const std::string& name = "picture") const
    {
        auto path = pathOf(name);
        std::ofstream file(path, std::ios::binary | std::ios::trunc);
        EXPECT_TRUE(file.write(bytes.constData(), bytes.size())) << path;
        return path;
    }

private:
    QTemporaryDir m_folder;
};

} // namespace Harness
