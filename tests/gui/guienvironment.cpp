#include <QApplication>

#include <array>
#include <gtest/gtest.h>
#include <memory>

namespace {

/// One application for all tests, on a platform that needs no display.
class GuiEnvironment : public testing::Environment {
public:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
            qputenv("QT_QPA_PLATFORM", "offscreen");
        }
        m_application = std::make_unique<QApplication>(m_count, m_arguments.data());
        QApplication::setQuitOnLastWindowClosed(false); // a test closes windows, not the program
    }
    void TearDown() override { m_application.reset(); }

private:
    std::array<char, 9> m_name{"test_gui"};
    std::array<char*, 2> m_arguments{m_name.data(), nullptr};
    int m_count = 1;
    std::unique_ptr<QApplication> m_application;
};

// GoogleTest owns the environment.
[[maybe_unused]] testing::Environment* const kEnvironment =
    testing::AddGlobalTestEnvironment(new GuiEnvironment);

} // namespace
