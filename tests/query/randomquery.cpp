// SPDX-License-Identifier: BSD-3-Clause
#include <query/randomquery.h>

QString RandomQuery::text(const QStringList& pieces, int most)
{
    QString result;
    for (int i = below(most + 1); i > 0; --i)
        result += pick(pieces);
    return result;
}

QString RandomQuery::soup(int most)
{
    static const QStringList pieces = {
        QStringLiteral("a"),         QStringLiteral("bc"),         QStringLiteral("1"),
        QStringLiteral(":"),         QStringLiteral("a:tool"),     QStringLiteral(":filename"),
        QStringLiteral(":user{"),    QStringLiteral("}"),          QStringLiteral("{"),
        QStringLiteral("x:user{k}"), QStringLiteral("\\"),         QStringLiteral("\\\\"),
        QStringLiteral("\\'"),       QStringLiteral("\\\""),       QStringLiteral("\\}"),
        QStringLiteral("'"),         QStringLiteral("\""),         QStringLiteral("'s'"),
        QStringLiteral("\"d\""),     QStringLiteral(" "),          QStringLiteral("\t"),
        QStringLiteral("\n"),        QStringLiteral("\r"),         QStringLiteral("\v"),
        QString(QChar(0x00a0)),      QString(QChar(0x2028)),       QString(QChar(0)),
        QString(QChar(0xd83d)),      QString(QChar(0xde00)),       QString(QChar(0x0663)),
        QStringLiteral("&&"),        QStringLiteral("&"),          QStringLiteral("||"),
        QStringLiteral("|"),         QStringLiteral("=="),         QStringLiteral("="),
        QStringLiteral("!"),         QStringLiteral("!="),         QStringLiteral("<"),
        QStringLiteral("<="),        QStringLiteral(">"),          QStringLiteral(">="),
        QStringLiteral("%contains"), QStringLiteral("%contains "), QStringLiteral("%matches "),
        QStringLiteral("%matches"),  QStringLiteral("%isapprox "), QStringLiteral("%isapprox\t"),
        QStringLiteral("%"),         QStringLiteral("("),          QStringLiteral(")"),
        QStringLiteral("a:isfile "), QStringLiteral("2013-05-01"), QStringLiteral(" foo "),
    };
    return text(pieces, most);
}

QString RandomQuery::operand()
{
    static const QStringList literals = {
        QStringLiteral("'x'"), QStringLiteral("y"),      QStringLiteral("\"z\""),
        QStringLiteral("'*'"), QStringLiteral("'?'"),    QStringLiteral("''"),
        QStringLiteral("'X'"), QStringLiteral("'[xy]'"), QStringLiteral("1"),
        QStringLiteral("10"),  QStringLiteral("'2 KB'"), QStringLiteral("2013-05-01"),
    };
    return pick(literals);
}

QString RandomQuery::test(const QString& name)
{
    static const QStringList texts = {
        QStringLiteral("title"), QStringLiteral("tool"),      QStringLiteral("comment"),
        QStringLiteral("host"),  QStringLiteral("filename"),  QStringLiteral("user{Key}"),
        QStringLiteral("any"),   QStringLiteral("userattrs"),
    };
    static const QStringList numbers = {QStringLiteral("tagid"), QStringLiteral("filesize"),
                                        QStringLiteral("parentid")};
    static const QStringList flags = {QStringLiteral("isfile"), QStringLiteral("iswfs"),
                                      QStringLiteral("embedded"), QStringLiteral("isinfile")};
    const auto variable = [&](const QStringList& attributes) {
        return name + u':' + pick(attributes);
    };
    switch (below(8)) {
    case 0:
        return variable(flags);
    case 1:
        return pick({QStringLiteral("x"), QStringLiteral("'y'"), QStringLiteral("1")});
    case 2:
        return variable(numbers) +
               pick({QStringLiteral(" < "), QStringLiteral(" >= "), QStringLiteral(" > "),
                     QStringLiteral(" <= "), QStringLiteral(" %isapprox ")}) +
               pick({QStringLiteral("1"), QStringLiteral("10"), QStringLiteral("'1kb'")});
    case 3:
        return operand() + QStringLiteral(" == ") + variable(texts + numbers + flags);
    case 4:
        return variable(texts.mid(0, 6)) +
               pick({QStringLiteral(" %contains "), QStringLiteral(" %matches ")}) + operand();
    default:
        return variable(texts + numbers) + pick({QStringLiteral(" == "), QStringLiteral(" != ")}) +
               operand();
    }
}

QString RandomQuery::query(const QStringList& names, int size)
{
    if (size <= 1) {
        const QString first = pick(names);
        QString one = test(first);
        if (once(4)) {
            static const QStringList both = {QStringLiteral("title"), QStringLiteral("comment"),
                                             QStringLiteral("tool"), QStringLiteral("tagid")};
            const QString attribute = pick(both);
            one = first + u':' + attribute +
                  pick({QStringLiteral(" == "), QStringLiteral(" != "),
                        QStringLiteral(" %contains ")}) +
                  pick(names) + u':' + (once(3) ? pick(both) : attribute);
            if (one.contains(QLatin1String("tagid %contains")))
                one =
                    first + QStringLiteral(":tagid < ") + pick(names) + QStringLiteral(":parentid");
        }
        return once(4) ? QStringLiteral("!(") + one + u')' : one;
    }
    const int left = 1 + below(size - 1);
    QString both = query(names, left) +
                   pick({QStringLiteral(" && "), QStringLiteral(" || "), QStringLiteral(" ")}) +
                   query(names, size - left);
    switch (below(5)) {
    case 0:
        return QStringLiteral("!(") + both + u')';
    case 1:
        return QStringLiteral("!!(") + both + u')';
    case 2:
        return both;
    default:
        return u'(' + both + u')';
    }
}
