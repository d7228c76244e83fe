// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "markupguard.h"
#include "testmain.h"

using MOLK::MarkupGuard;

/// The guard stops a document at the same byte, however the bytes come in.
class TestMarkupGuard : public QObject
{
    Q_OBJECT

private slots:
    void stopsAtTheByte_data();
    void stopsAtTheByte();
    void piecesOfExactlyTheLimitPass();
    void attributesUpToTheLimitPass();
    void nothingIsTakenOnceStopped();
    void cutCharacterIsFoundAtTheEnd();
};

static int acceptedInPieces(MarkupGuard *guard, const QByteArray &bytes, int pieceSize)
{
    int accepted = 0;
    for (int at = 0; at < bytes.size(); at += pieceSize) {
        const QByteArray piece = bytes.mid(at, pieceSize);
        accepted += int(guard->accept(piece.constData(), piece.size()));
    }
    guard->finish();
    return accepted;
}

void TestMarkupGuard::stopsAtTheByte_data()
{
    QTest::addColumn<QByteArray>("passed");
    QTest::addColumn<QByteArray>("stopped");

    const auto row = [](const char *name, const QByteArray &passed, const QByteArray &stopped) {
        QTest::newRow(name) << passed << stopped;
    };
    const QByteArray many = QByteArray(" a=''").repeated(64);
    row("nothing", "", "");
    row("plain", "<?xml?><a b='>' c=\"'\">text > <!-- \" ' <b --> </a>", "");
    row("document-type", "<a/><!", "DOCTYPE a>");
    row("document-type-behind-shortest-comment", "<!----><!", "D>");
    row("open-comment-hides-all", "<!--><!DOCTYPE a>", "");
    row("open-comment-hides-all-of-three-dashes", "<!---><!DOCTYPE a>", "");
    row("comment-with-brackets", "<!-- > -> --><!", "D");
    row("character-data", "<![CDATA[ ]> ]] > <!D ]]><!", "D");
    row("character-data-empty", "<![CDATA[]]><!", "D");
    row("instruction", "<?a > ? > <!D ?><!", "D");
    row("instruction-can-not-close-itself", "<?><!D", "");
    row("bracket-in-a-value", "<a b='><!D'><!", "D");
    row("too-many-attributes", "<a" + many + " a=", "''>");
    row("attributes-are-counted-a-tag", "<a" + many + "/><a" + many + " a=", "\"\">");
    row("quotes-in-text-count-nothing", QByteArray(1000, '"') + "<a/>" + QByteArray(1000, '\''),
        "");
    row("nul", "<a>", QByteArray("\0x", 2));
    row("letters", "<a b='\xC3\xA4\xE4\xBF\xA1\xF0\x9D\x84\x9E'/>", "");
    row("wrong-first-byte", "<a b='\xC3\xA4", "\xC1\xBF'/>");
    row("wrong-second-byte", "<a b='\xE0", "\x80\x80'/>");
    row("above-the-last-code", "<a b='\xF4", "\x90\x80\x80'/>");
}

void TestMarkupGuard::stopsAtTheByte()
{
    QFETCH(QByteArray, passed);
    QFETCH(QByteArray, stopped);
    const QByteArray bytes = passed + stopped;
    for (int pieceSize : {1, 2, 3, 7, 1000000}) {
        MarkupGuard guard;
        QCOMPARE(acceptedInPieces(&guard, bytes, pieceSize), passed.size());
        QCOMPARE(guard.fault().isEmpty(), stopped.isEmpty());
    }
}

void TestMarkupGuard::piecesOfExactlyTheLimitPass()
{
    // Without its first bracket a tag of the limit has as many bytes.
    const QByteArray tag = '<' + QByteArray(1024 * 1024 - 1, 'a') + '>';
    const QByteArray text(1024 * 1024, 'a');
    for (int pieceSize : {1000, 16384, 100000000}) {
        MarkupGuard whole;
        acceptedInPieces(&whole, tag + text + tag, pieceSize);
        QVERIFY(whole.fault().isEmpty());

        MarkupGuard longTag;
        acceptedInPieces(&longTag, "<aa" + tag.mid(1), pieceSize);
        QVERIFY(!longTag.fault().isEmpty());

        MarkupGuard longText;
        acceptedInPieces(&longText, "<a>a" + text, pieceSize);
        QVERIFY(!longText.fault().isEmpty());
    }
}

void TestMarkupGuard::attributesUpToTheLimitPass()
{
    MarkupGuard guard;
    const QByteArray bytes = "<a" + QByteArray(" a=''").repeated(64) + "/>";
    QCOMPARE(acceptedInPieces(&guard, bytes, 10), bytes.size());
    QVERIFY(guard.fault().isEmpty());
}

void TestMarkupGuard::nothingIsTakenOnceStopped()
{
    MarkupGuard guard;
    QCOMPARE(guard.accept("<!D", 3), qint64(2));
    const QString fault = guard.fault();
    QCOMPARE(guard.accept("<a/>", 4), qint64(0));
    guard.finish();
    QCOMPARE(guard.fault(), fault);
}

void TestMarkupGuard::cutCharacterIsFoundAtTheEnd()
{
    MarkupGuard guard;
    QCOMPARE(guard.accept("<a/>\xE4\xBF", 6), qint64(6));
    QVERIFY(guard.fault().isEmpty());
    guard.finish();
    QCOMPARE(guard.fault(), QString("a character that is cut off by the end of the file"));
}

MOLK_TEST_GUILESS_MAIN(TestMarkupGuard)
#include "tst_markupguard.moc"
