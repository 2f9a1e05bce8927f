#pragma once

#include <QString>
#include <QStringList>

/// What the command line asks for.
struct DraftOptions {
    QString drawing{};
    QString script{};
    bool keepGoing = false;
    bool quit = false;
};

/// Reads the command line; -h and --version print and end the program, as a line that makes no
/// sense does.
DraftOptions readOptions(const QStringList& arguments);
