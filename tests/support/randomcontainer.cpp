// SPDX-License-Identifier: BSD-3-Clause
#include <support/randomcontainer.h>

#include <QRegularExpression>

namespace {

QByteArray fakeMarker(Dice& dice)
{
    const auto number = [&dice] {
        return dice.once(5) ? QByteArray() : QByteArray::number(dice.below(400));
    };
    const QByteArray digest = dice.once(2) ? QByteArray() : QByteArray(32, 'a');
    if (dice.once(2))
        return ContainerBuilder::sectionMarker({{"version", "1.0"},
                                                {"title", "fake"},
                                                {"left", number()},
                                                {"size", number()},
                                                {"index", number()},
                                                {"md5section", digest},
                                                {"previousmarker", number()}});
    return ContainerBuilder::fileMarker({{"filename", "fake"},
                                         {"compression", dice.once(2) ? "none" : "flate"},
                                         {"filesize", number()},
                                         {"cfilesize", number()},
                                         {"blocksize", number()},
                                         {"offset", number()},
                                         {"md5file", digest}});
}

QByteArray randomLine(Dice& dice, const QByteArray& lineEnd)
{
    switch (dice.below(14)) {
    case 0:
        return "\xef\xbb\xbf" + fakeMarker(dice) + lineEnd;
    case 1:
        return fakeMarker(dice) + lineEnd;
    case 2:
        return "text " + fakeMarker(dice) + " and " + fakeMarker(dice) + lineEnd;
    case 3:
        return QByteArray("zero\0byte", 9) + lineEnd;
    case 4:
        return "\xff\xc3" + fakeMarker(dice) + lineEnd;
    case 5:
        return "%<--! $LORIX_SECTION " + dice.bytes(dice.below(30), "[]\\n:") + lineEnd;
    case 6:
        return "%<--! $LORIX_EMBEDDEDFILE_BEGIN " + dice.bytes(dice.below(30), "[]\\n:") + lineEnd;
    case 7:
        return lineEnd;
    case 8:
        return dice.bytes(dice.below(100), "\n\r a%") + lineEnd;
    case 9:
        return dice.once(6) ? QByteArray(dice.between(5000, 25000), 'l') + lineEnd : lineEnd;
    default:
        return dice.bytes(dice.below(60), "abcdefgh <>%-![]") + lineEnd;
    }
}

QByteArray randomLines(Dice& dice, int most, const QByteArray& lineEnd)
{
    QByteArray result;
    for (int i = dice.below(most + 1); i > 0; --i)
        result += randomLine(dice, lineEnd);
    return result;
}

QString randomName(Dice& dice)
{
    static const QList<QString> names = {QStringLiteral("ws_summary.xml"),
                                         QStringLiteral("mesh.txt"),
                                         QStringLiteral("a]b\\c.txt"),
                                         QString::fromUtf8("gr\xc3\xb6\xc3\x9f"
                                                           "e \xe2\x82\xac.txt"),
                                         QStringLiteral("two\nlines"),
                                         QString::fromUtf8("\xf0\x9f\x98\x80.png"),
                                         QStringLiteral("../../etc/x"),
                                         QString(),
                                         QStringLiteral("inner.lorix"),
                                         QStringLiteral("%1 %2")};
    return dice.oneOf(names);
}

QByteArray randomContent(Dice& dice, int depth)
{
    switch (dice.below(8)) {
    case 0:
        return {};
    case 1:
        return dice.anyBytes(dice.below(2000));
    case 2:
        return randomLines(dice, 6, "\n");
    case 3:
        return depth < 2 && dice.once(2) ? randomContainer(dice, depth + 1) : QByteArray("x\n");
    case 4:
        return QByteArray(dice.below(20000), 'z');
    default:
        return dice.bytes(dice.below(300), "abc \n");
    }
}

FileSpec randomFile(Dice& dice, int depth)
{
    FileSpec spec(randomName(dice), randomContent(dice, depth));
    if (dice.once(2))
        spec.flate(dice.below(10));
    if (dice.once(20))
        spec.setGap(dice.bytes(dice.below(20), "gap\n"));
    if (dice.once(20))
        spec.setTail(dice.bytes(dice.below(20), "tail\n"));
    if (dice.once(15))
        spec.setLineSuffix(dice.bytes(dice.below(20), "suffix -->"));
    if (dice.once(30))
        spec.setLinePrefix("before ");
    if (dice.once(15))
        spec.withoutClosingLineEnd();
    if (dice.once(30))
        spec.compression = dice.oneOf(QList<QByteArray>{"", "Flate", "gzip", "none "});
    return spec;
}

SectionSpec randomSection(Dice& dice, const QByteArray& lineEnd, int depth)
{
    SectionSpec spec(randomName(dice));
    for (int i = dice.below(5); i > 0; --i)
        spec.file(randomFile(dice, depth));
    spec.markerAfter(dice.below(static_cast<int>(spec.files.size()) + 1));
    if (dice.once(3))
        spec.setLeadingBytes(randomLines(dice, 3, lineEnd));
    if (dice.once(3))
        spec.setTrailingBytes(randomLines(dice, 3, lineEnd));
    if (dice.once(6))
        spec.setLinePrefix(dice.oneOf(
            QList<QByteArray>{"endobj ", "\xef\xbb\xbf", "%<--! $LORIX_SECTION ", "\xc3", "% "}));
    if (dice.once(6))
        spec.setLineSuffix(dice.once(3) ? fakeMarker(dice) : QByteArray(" more"));
    return spec;
}

void replaceANumber(Dice& dice, QByteArray& bytes)
{
    static const QRegularExpression field(QStringLiteral(
        R"(\[(left|size|index|previousmarker|filesize|cfilesize|blocksize|offset):([0-9]*)\])"));
    const QString text = QString::fromLatin1(bytes);
    QList<QPair<int, int>> places;
    for (auto it = field.globalMatch(text); it.hasNext();) {
        const auto match = it.next();
        places.append(qMakePair(static_cast<int>(match.capturedStart(2)),
                                static_cast<int>(match.capturedLength(2))));
    }
    if (places.isEmpty())
        return;
    const auto place = dice.oneOf(places);
    const auto other = dice.oneOf(places);
    const qint64 old = bytes.mid(place.first, place.second).toInt();
    const QList<QByteArray> numbers = {
        bytes.mid(other.first, other.second),
        QByteArray::number(old + dice.between(-5, 5)),
        QByteArray::number(old + dice.between(-5, 5)),
        QByteArray::number(dice.below(static_cast<int>(bytes.size()) + 1)),
        "",
        "0",
        "2147483647",
        "2147483648",
        "4294967295",
        "99999999999999999999",
        "000" + QByteArray::number(old)};
    bytes.replace(place.first, place.second, dice.oneOf(numbers));
}

void damageOnce(Dice& dice, QByteArray& bytes)
{
    const int size = static_cast<int>(bytes.size());
    const int place = dice.below(size);
    switch (dice.below(12)) {
    case 0:
    case 1:
        bytes[place] = static_cast<char>(bytes.at(place) ^ (1 << dice.below(8)));
        break;
    case 2:
        bytes.truncate(place);
        break;
    case 3:
        bytes.remove(place, dice.below(60));
        break;
    case 4:
        bytes.insert(place, bytes.mid(dice.below(size), dice.below(600)));
        break;
    case 5: {
        const qsizetype marker = bytes.indexOf("%<--! ", place);
        if (marker >= 0)
            bytes.insert(marker, dice.oneOf(QList<QByteArray>{"\xef\xbb\xbf", "x ", "\n", "\r",
                                                              "\xc3", QByteArray("\0", 1)}));
        break;
    }
    case 6: {
        const qsizetype feed = bytes.indexOf('\n', place);
        if (feed >= 0)
            bytes.replace(feed, 1,
                          dice.oneOf(QList<QByteArray>{"", "\r", "\n\n", "\n\xef\xbb\xbf"}));
        break;
    }
    default:
        replaceANumber(dice, bytes);
    }
}

} // namespace

QByteArray randomContainer(Dice& dice, int depth)
{
    const QList<QByteArray> lineEnds = {"\n", "\n", "\r\n"};
    QByteArray lineEnd = dice.oneOf(lineEnds);
    ContainerBuilder builder(lineEnd);
    builder.header(dice.once(4) ? dice.between(1, 11) : 1, dice.once(4) ? " tail" : "");
    builder.text(randomLines(dice, 6, lineEnd));
    for (int i = dice.below(6); i > 0; --i) {
        if (dice.once(4)) {
            lineEnd = dice.oneOf(lineEnds);
            builder.setLineEnd(lineEnd);
        }
        if (dice.once(4))
            builder.text(randomLines(dice, 4, lineEnd));
        if (dice.once(6))
            builder.file(randomFile(dice, depth));
        if (dice.once(15))
            builder.forgetChain();
        builder.section(randomSection(dice, lineEnd, depth));
    }
    if (dice.once(4))
        builder.text(randomLines(dice, 4, lineEnd));
    if (dice.once(8))
        builder.text("unfinished " + fakeMarker(dice));
    return builder.bytes();
}

QByteArray randomDamage(Dice& dice, QByteArray container)
{
    for (int i = dice.between(1, 5); i > 0 && !container.isEmpty(); --i)
        damageOnce(dice, container);
    return container;
}
