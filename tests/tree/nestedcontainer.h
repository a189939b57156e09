// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <support/containerbuilder.h>

#include <QList>
#include <QString>

/// One step of a container to be written, with the files that it embeds.
struct WrittenStep
{
    QString title;
    QString tool;
    QString description;
    QList<FileSpec> files;
};

/// Appends a section to the container, with an XML summary that names the
/// step's files as embedded.
void appendStep(ContainerBuilder& builder, const WrittenStep& step);

/// The bytes of a container with these steps, oldest first.
QByteArray containerOf(const QList<WrittenStep>& steps);

/// A nested container to be embedded.
FileSpec nestedFile(const QString& name, const QByteArray& container);
