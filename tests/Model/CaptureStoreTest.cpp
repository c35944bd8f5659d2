#include "Model/CaptureStore.h"

#include "Fakes/FakeFileSystem.h"

#include <gtest/gtest.h>

namespace {

using namespace Lumenote;
namespace fs = std::filesystem;

class CaptureStoreTest : public testing::Test {
protected:
    fs::path record(int second, QUuid id = QUuid::createUuid(), double scale = 1)
    {
        QImage image(30, 20, QImage::Format_RGB32);
        image.fill(Qt::red);
        auto file = m_store.fileFor({.id = id,
            .capturedAt = QDateTime(QDate(2026, 1, 16), QTime(17, 30, second), Qt::UTC)});
        EXPECT_TRUE(m_store.write(image, file, scale));
        return file;
    }

    std::shared_ptr<Fakes::FakeFileSystem> m_files = std::make_shared<Fakes::FakeFileSystem>();
    CaptureStore m_store{m_files->root() / "Captures", m_files};
};

TEST_F(CaptureStoreTest, whatIsBeyondTheLimitIsPrunedWithItsText)
{
    std::vector<fs::path> captures;
    QList<QUuid> ids;
    for (int i = 0; i < 5; ++i) {
        ids.append(QUuid::createUuid());
        captures.push_back(record(i, ids.back(), 2));
        EXPECT_TRUE(m_store.writeText({}, ids.back()));
    }

    const auto stored = m_store.load(3);

    ASSERT_EQ(stored.size(), 3);
    EXPECT_EQ(stored.front().file, captures.back());
    EXPECT_EQ(stored.front().pointSize, QSizeF(15, 10));
    EXPECT_FALSE(fs::exists(captures[1]));
    EXPECT_FALSE(m_store.readText(ids[1]));
    EXPECT_TRUE(m_store.readText(ids[2]));
}

} // namespace
