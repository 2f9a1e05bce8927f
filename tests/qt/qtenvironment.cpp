#include <QGuiApplication>

#include <array>
#include <gtest/gtest.h>
#include <memory>

namespace {

/// One application object for all tests, on a platform that needs no display.
class QtEnvironment : public testing::Environment {
public:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
            qputenv("QT_QPA_PLATFORM", "offscreen");
        }
        m_application = std::make_unique<QGuiApplication>(m_count, m_arguments.data());
    }
    void TearDown() override { m_application.reset(); }

private:
    std::array<char, 8> m_name{"test_qt"};
    std::array<char*, 2> m_arguments{m_name.data(), nullptr};
    int m_count = 1;
    std::unique_ptr<QGuiApplication> m_application;
};

// GoogleTest owns the environment.
[[maybe_unused]] testing::Environment* const kEnvironment =
    testing::AddGlobalTestEnvironment(new QtEnvironment);

} // namespace
