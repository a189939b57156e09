// SPDX-License-Identifier: BSD-3-Clause
#include "apps/viewer/sampledocuments.h"

#include <support/containerbuilder.h>

#include <QBuffer>
#include <QImage>
#include <QList>

namespace samples {

namespace {

struct SampleFile
{
    const char* name;
    QByteArray content;
    bool isInput;
    const char* description;
};

struct SampleStep
{
    const char* title;
    const char* description;
    const char* tool;
    const char* user;
    const char* timestamp;
    QList<SampleFile> files;
};

QByteArray element(const char* name, const QByteArray& text)
{
    return QByteArray("<") + name + ">" + text + "</" + name + ">\n";
}

QByteArray fileXml(const SampleFile& file, const QByteArray& stored)
{
    const char* const kind = file.isInput ? "InFile" : "OutFile";
    return element(kind, element("Filename", file.name) + element("Description", file.description) +
                             element("LastModified", "2026-03-02 10:15:00") +
                             element("Embedded", "1") +
                             element("UncompressedSize", QByteArray::number(file.content.size())) +
                             element("UncompressedMD5", ContainerBuilder::md5(file.content)) +
                             element("CompressedMethod", "flate") +
                             element("CompressedSize", QByteArray::number(stored.size())) +
                             element("CompressedMD5", ContainerBuilder::md5(stored)));
}

SectionSpec sectionOf(const SampleStep& step)
{
    SectionSpec section(QString::fromUtf8(step.title));
    QByteArray xml = element("Title", step.title) + element("Description", step.description) +
                     element("Tool", step.tool) + element("User", step.user) +
                     element("Host", "workstation-7") + element("Timestamp", step.timestamp) +
                     element("Command", QByteArray(step.tool) + " --project fin.prj");
    for (const SampleFile& file : step.files) {
        FileSpec spec(QString::fromUtf8(file.name), file.content);
        spec.flate();
        spec.desc = QString::fromUtf8(file.description);
        section.file(spec);
        xml += fileXml(file, spec.stored);
    }
    xml +=
        element("UserAttributes",
                element("Attribute", element("Key", "ambient") + element("Value", "293.15") +
                                         element("Unit", "K")) +
                    element("Attribute", element("Key", "project") + element("Value", "fin 12")));
    const QByteArray summary =
        "<?xml version=\"1.0\"?>\n" + element("loxchange", element("Workflowstep", xml));
    section.file(FileSpec(QStringLiteral("ws_summary.xml"), summary).flate());
    return section;
}

QByteArray documentOf(const QList<SampleStep>& steps)
{
    ContainerBuilder builder;
    builder.start();
    for (const SampleStep& step : steps)
        builder.section(sectionOf(step));
    return builder.bytes();
}

QByteArray picture()
{
    QImage image(320, 200, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixelColor(x, y, QColor::fromHsv(240 - x * 240 / 320, 200, 255 - y / 2));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

// The least that is a page with one line on it.
QByteArray pdf()
{
    const QByteArray text = "BT /F1 24 Tf 60 700 Td (Cooling fin: report) Tj ET";
    const QList<QByteArray> objects{
        "<</Type/Catalog/Pages 2 0 R>>", "<</Type/Pages/Kids[3 0 R]/Count 1>>",
        "<</Type/Page/Parent 2 0 R/MediaBox[0 0 595 842]/Contents 4 0 R"
        "/Resources<</Font<</F1<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>>>>>>>",
        "<</Length " + QByteArray::number(text.size()) + ">>\nstream\n" + text + "\nendstream"};
    QByteArray bytes = "%PDF-1.4\n";
    QByteArray table = "xref\n0 5\n0000000000 65535 f \n";
    for (int i = 0; i < objects.size(); ++i) {
        table += QByteArray::number(bytes.size()).rightJustified(10, '0') + " 00000 n \n";
        bytes += QByteArray::number(i + 1) + " 0 obj\n" + objects.at(i) + "\nendobj\n";
    }
    const QByteArray at = QByteArray::number(bytes.size());
    return bytes + table + "trailer\n<</Size 5/Root 1 0 R>>\nstartxref\n" + at + "\n%%EOF\n";
}

QByteArray table()
{
    QByteArray text = "x;y;temperature\n";
    for (int i = 0; i < 60; ++i)
        text += QByteArray::number(i) + ";0;" + QByteArray::number(293.15 + i * 0.7) + "\n";
    return text;
}

QList<SampleStep> materialSteps()
{
    return {{"Measure the samples",
             "Conductivity of three aluminium samples.",
             "data logger",
             "erik",
             "2026-02-11 09:20:00",
             {{"samples.txt", "A1 A2 A3\n", true, "Samples taken from the store"},
              {"readings.csv", "A1;205\nA2;207\nA3;204\n", false, "Raw readings"}}},
            {"Fit the conductivity",
             "Mean over all samples.",
             "python",
             "erik",
             "2026-02-12 14:02:00",
             {{"readings.csv", "A1;205\nA2;207\nA3;204\n", true, "Raw readings"},
              {"fit.py", "print(sum(readings) / 3)\n", true, "The program"},
              {"conductivity.txt", "205.3 W/(m K)\n", false, "The result"}}}};
}

QList<SampleStep> reportSteps()
{
    return {
        {"Draw the fin",
         "Outline and thickness of the cooling fin.",
         "freehand",
         "anna",
         "2026-02-27 16:41:00",
         {{"sketch.txt", "20 mm x 60 mm\n", true, "Sketch from the meeting"},
          {"fin.dxf", QByteArray(4000, 'L'), false, "The drawing"}}},
        {"Mesh the fin",
         "12 000 triangles.",
         "mesher",
         "anna",
         "2026-03-01 11:05:00",
         {{"fin.dxf", QByteArray(4000, 'L'), true, "The drawing"},
          {"fin.mesh", QByteArray(60000, 'm'), false, "The mesh"}}},
        {"Compute the temperatures",
         "Steady state, two dimensions.",
         "python",
         "bela",
         "2026-03-02 10:12:00",
         {{"fin.mesh", QByteArray(60000, 'm'), true, "The mesh"},
          {"solve.py", "import numpy\n# solves the heat equation\n", true, "The program"},
          {"material.lorix", documentOf(materialSteps()), true, "Where the material comes from"},
          {"temperatures.csv", table(), false, "The result"},
          {"map.png", picture(), false, "Temperatures in colours"}}},
        {"Write the report",
         "First draft for the meeting in March.",
         "writer",
         "anna",
         "2026-03-03 17:30:00",
         {{"map.png", picture(), true, "Temperatures in colours"},
          {"draft.pdf", pdf(), false, "The report as it was sent out"}}}};
}

} // namespace

QByteArray report()
{
    return documentOf(reportSteps());
}

QByteArray damagedReport()
{
    ContainerBuilder builder;
    builder.start();
    for (const SampleStep& step : reportSteps())
        builder.section(sectionOf(step));
    QByteArray bytes = builder.bytes();
    for (const PlacedFile& file : builder.files())
        if (file.name == "temperatures.csv") {
            const qsizetype at = static_cast<qsizetype>(file.stored + file.storedSize / 2);
            bytes[at] = static_cast<char>(bytes.at(at) ^ 0x21);
        }
    return bytes;
}

QByteArray otherReport()
{
    QList<SampleStep> steps = reportSteps();
    steps[2].tool = "octave";
    steps.removeAt(0);
    steps.append({"Review",
                  "Two typing errors.",
                  "writer",
                  "carla",
                  "2026-03-05 08:00:00",
                  {{"remarks.txt", "page 2: teh\n", true, "Remarks"}}});
    return documentOf(steps);
}

QByteArray reorderedReport()
{
    QList<SampleStep> steps = reportSteps();
    steps.swapItemsAt(1, 2);
    return documentOf(steps);
}

QByteArray large(int steps, int filesPerStep)
{
    ContainerBuilder builder;
    builder.start();
    for (int i = 0; i < steps; ++i) {
        SectionSpec section(QStringLiteral("Step %1").arg(i + 1));
        for (int k = 0; k < filesPerStep; ++k)
            section.file(FileSpec(QStringLiteral("file-%1-%2.txt").arg(i).arg(k), "data\n"));
        builder.section(section);
    }
    return builder.bytes();
}

QString write(const QString& path, const QByteArray& bytes)
{
    return ContainerBuilder::writeFile(path, bytes);
}

} // namespace samples
