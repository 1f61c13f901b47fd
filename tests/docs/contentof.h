#pragma once

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QString>

/// The text of a file that has to be there.
inline QString contentOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}
