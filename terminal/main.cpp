#include <QtCore/QCoreApplication>
#include <QtWidgets/QApplication>
#include <cstdio>

#include "window/options.h"
#include "window/terminalprogram.h"

namespace {

constexpr int unusable = 2;

int printTo(FILE *stream, const QString &text, int status)
{
    std::fputs(text.toUtf8().constData(), stream);
    return status;
}

QStringList argumentsOf(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    return arguments;
}

/// Chooses where the program shows itself, before the application starts there. False when there is no place to.
bool choosePlatform(bool headless)
{
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        return true;
    if (headless) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        return true;
    }
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
#else
    return true;
#endif
}

} // namespace

int main(int argc, char **argv)
{
    using terminal::ParsedOptions;
    const ParsedOptions parsed = terminal::parseOptions(argumentsOf(argc, argv));
    if (parsed.action == ParsedOptions::Action::Print)
        return printTo(stdout, parsed.text, 0);
    if (parsed.action == ParsedOptions::Action::Refuse)
        return printTo(stderr, parsed.text + QStringLiteral("\n--help 列出所有选项。\n"), unusable);
    if (!choosePlatform(parsed.options.headless))
        return printTo(stderr, QStringLiteral("没有可用的显示器；--headless 可以不用显示器运行。\n"), unusable);

    QCoreApplication::setApplicationName(QStringLiteral("uicontrol-terminal"));
    terminal::logQtMessages();
    QApplication application(argc, argv);
    return terminal::TerminalProgram(application, parsed.options).run();
}
