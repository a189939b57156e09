// SPDX-License-Identifier: BSD-3-Clause
#include <tree/nestedcontainer.h>

namespace {

QByteArray element(const QByteArray& tag, const QByteArray& content)
{
    return "<" + tag + ">" + content + "</" + tag + ">";
}

QByteArray entry(const FileSpec& file)
{
    return element("OutFile",
                   element("Filename", file.name.toUtf8()) +
                       element("Filetype", file.type.toUtf8()) + element("Embedded", "1") +
                       element("UncompressedSize", QByteArray::number(file.content.size())) +
                       element("UncompressedMD5", ContainerBuilder::md5(file.content)) +
                       element("CompressedMethod", file.compression) +
                       element("CompressedSize", QByteArray::number(file.stored.size())) +
                       element("CompressedMD5", ContainerBuilder::md5(file.stored)));
}

} // namespace

void appendStep(ContainerBuilder& builder, const WrittenStep& step)
{
    SectionSpec section(step.title);
    QByteArray text = element("Title", step.title.toUtf8()) + element("Tool", step.tool.toUtf8()) +
                      element("Description", step.description.toUtf8());
    for (const FileSpec& file : step.files) {
        section.file(file);
        text += entry(file);
    }
    const QByteArray xml =
        "<?xml version=\"1.0\"?>\n" + element("loxchange", element("Workflowstep", text));
    section.file(FileSpec(QStringLiteral("ws_summary.xml"), xml).flate());
    builder.section(section);
}

QByteArray containerOf(const QList<WrittenStep>& steps)
{
    ContainerBuilder builder;
    builder.start();
    for (const WrittenStep& step : steps)
        appendStep(builder, step);
    return builder.bytes();
}

FileSpec nestedFile(const QString& name, const QByteArray& container)
{
    return FileSpec(name, container);
}
