// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/verificationcode.h"
#include "frontend/verilogmacros.h"
#include "frontend/verilogpreprocessor.h"
#include "frontend/verilogtext.h"
#include "testmain.h"

class tst_VerilogText : public QObject
{
    Q_OBJECT

private slots:
    void argumentsOfMacrosAreJoined_data();
    void argumentsOfMacrosAreJoined();
    void pragmaIsRecognised_data();
    void pragmaIsRecognised();
    void excludedVerilogBecomesConditional_data();
    void excludedVerilogBecomesConditional();
    void excludedVhdlIsBlanked();
    void vhdlLiteralsHideNoPragma_data();
    void vhdlLiteralsHideNoPragma();
    void commentsGo_data();
    void commentsGo();
    void checksGo_data();
    void checksGo();
    void lineNumbersStay();
    void includesOfOneLineFollowOneAnother();
};

void tst_VerilogText::pragmaIsRecognised_data()
{
    QTest::addColumn<QByteArray>("comment");
    QTest::addColumn<int>("meaning");

    QTest::newRow("synthesis-off") << QByteArray(" synthesis translate_off") << 1;
    QTest::newRow("synthesis-on") << QByteArray(" synthesis translate_on") << 2;
    QTest::newRow("synopsys") << QByteArray("synopsys translate_off") << 1;
    QTest::newRow("pragma") << QByteArray("  pragma\ttranslate_off  ") << 1;
    QTest::newRow("xilinx") << QByteArray(" xilinx translate_on ") << 2;
    QTest::newRow("altera") << QByteArray(" altera translate_off") << 1;
    QTest::newRow("capitals") << QByteArray(" SYNOPSYS TRANSLATE_OFF") << 1;
    QTest::newRow("two-words") << QByteArray(" synopsys translate off") << 1;
    QTest::newRow("synthesis_off") << QByteArray(" synopsys synthesis_off") << 1;
    QTest::newRow("rtl_synthesis") << QByteArray(" rtl_synthesis off") << 1;
    QTest::newRow("text-behind") << QByteArray(" synthesis translate_off: simulation only") << 1;
    QTest::newRow("carriage-return") << QByteArray(" synthesis translate_on\r") << 2;
    QTest::newRow("other-pragma") << QByteArray(" synopsys full_case") << 0;
    QTest::newRow("no-tool") << QByteArray(" translate_off") << 0;
    QTest::newRow("prose") << QByteArray(" see synthesis translate_off") << 0;
    QTest::newRow("empty") << QByteArray("") << 0;
    QTest::newRow("longer-word") << QByteArray(" synthesis translate_offset") << 0;
}

void tst_VerilogText::pragmaIsRecognised()
{
    QFETCH(QByteArray, comment);
    QTEST(Standin::translatePragma(comment.constBegin(), comment.constEnd()), "meaning");
}

void tst_VerilogText::excludedVerilogBecomesConditional_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QByteArray>("masked");
    const QByteArray off = "`ifdef MOLK_NEVER_DEFINED__ ";
    const QByteArray on = " `endif ";

    QTest::newRow("none") << QByteArray("wire a;\n") << QByteArray("wire a;\n");
    QTest::newRow("line-comments") << QByteArray("a\n// synthesis translate_off\nb\n"
                                                 "// synthesis translate_on\nc\n")
                                   << "a\n" + off + "\nb\n" + on + "\nc\n";
    QTest::newRow("block-comments")
        << QByteArray("a /* synopsys translate_off */ b /* synopsys translate_on */ c")
        << "a " + off + " b " + on + " c";
    QTest::newRow("block-over-lines")
        << QByteArray("/* pragma translate_off\n\n*/ b\n// pragma translate_on\n")
        << off + "\n\n b\n" + on + "\n";
    QTest::newRow("repeated-off") << QByteArray(
        "// synthesis translate_off\n// synthesis translate_off\n"
        "// synthesis translate_on\n")
                                  << off + "\n// synthesis translate_off\n" + on + "\n";
    QTest::newRow("stray-on") << QByteArray("// synthesis translate_on\na // off")
                              << QByteArray("// synthesis translate_on\na // off");
    QTest::newRow("never-on") << QByteArray("// synthesis translate_off\nb")
                              << off + "\nb\n`endif\n";
    QTest::newRow("in-string") << QByteArray("\"// synthesis translate_off\"")
                               << QByteArray("\"// synthesis translate_off\"");
    QTest::newRow("quote-in-string") << QByteArray("\"\\\"// synthesis translate_off\"")
                                     << QByteArray("\"\\\"// synthesis translate_off\"");
    QTest::newRow("open-string-ends-with-line")
        << QByteArray("\"abc\n// synthesis translate_off\n") << "\"abc\n" + off + "\n\n`endif\n";
    QTest::newRow("in-escaped-name") << QByteArray("\\a//synthesis translate_off b")
                                     << QByteArray("\\a//synthesis translate_off b");
    QTest::newRow("in-macro") << QByteArray("`define X a \\\n// synthesis translate_off \\\nb\n`X")
                              << QByteArray("`define X a \\\n// synthesis translate_off \\\nb\n`X");
    QTest::newRow("behind-macro") << QByteArray("`define X a\n// synthesis translate_off\n")
                                  << "`define X a\n" + off + "\n\n`endif\n";
    QTest::newRow("open-comment") << QByteArray("/* off") << QByteArray("/* off");
}

void tst_VerilogText::excludedVerilogBecomesConditional()
{
    QFETCH(QByteArray, source);
    QTEST(Standin::maskVerilogPragmas(source), "masked");
}

void tst_VerilogText::excludedVhdlIsBlanked()
{
    QCOMPARE(Standin::maskVhdlPragmas("a <= b;\n-- synthesis translate_off\nassert c;\n"
                                      "-- synthesis translate_on\nd <= \"-- x\";\n"),
             QByteArray("a <= b;\n                          \n         \n"
                        "-- synthesis translate_on\nd <= \"-- x\";\n"));
    QCOMPARE(Standin::maskVhdlPragmas("a -- pragma translate_off\nb"),
             QByteArray("a                        \n "));
}

void tst_VerilogText::vhdlLiteralsHideNoPragma_data()
{
    QTest::addColumn<QByteArray>("line");

    QTest::newRow("backslash") << QByteArray("a <= \"\\\";");
    QTest::newRow("quotation-mark") << QByteArray("a <= '\"';");
    QTest::newRow("doubled-quotation-mark") << QByteArray("a <= \"x\"\"y\";");
    QTest::newRow("qualified") << QByteArray("a <= character'('\"');");
    QTest::newRow("comment") << QByteArray("a <= b; /* \" */");
}

void tst_VerilogText::vhdlLiteralsHideNoPragma()
{
    QFETCH(QByteArray, line);
    const QByteArray pragma = " -- synthesis translate_off";
    QCOMPARE(Standin::maskVhdlPragmas(line + pragma + "\nb"),
             line + ' ' + QByteArray(pragma.size() - 1, ' ') + "\n ");
}

void tst_VerilogText::commentsGo_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("stripped");

    QTest::newRow("none") << QByteArray("a / b") << QByteArray("a / b");
    QTest::newRow("hot") << QByteArray("a /*verilator lint_off X*/ b") << QByteArray("a   b");
    QTest::newRow("lines") << QByteArray("a /*x\ny\n*/ b") << QByteArray("a  \n\n b");
    QTest::newRow("line") << QByteArray("a // b\nc") << QByteArray("a  \nc");
    QTest::newRow("open") << QByteArray("a /* b\n") << QByteArray("a  \n");
    QTest::newRow("string") << QByteArray("\"/* x */\"") << QByteArray("\"/* x */\"");
    QTest::newRow("escaped") << QByteArray("\\a/*b c*/ d") << QByteArray("\\a/*b c*/ d");
    QTest::newRow("at-end") << QByteArray("a /") << QByteArray("a /");
}

void tst_VerilogText::commentsGo()
{
    QFETCH(QByteArray, text);
    QTEST(Standin::stripComments(text), "stripped");
}

void tst_VerilogText::checksGo_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("left");

    QTest::newRow("plain") << QByteArray("assign a = b;") << QByteArray("assign a = b;");
    QTest::newRow("assertion") << QByteArray("x; assert property (@(posedge c) a |=> b[*2]); y;")
                               << QByteArray("x; ; y;");
    QTest::newRow("labelled") << QByteArray("x; l: assert property (a); y;")
                              << QByteArray("x; ; y;");
    QTest::newRow("with-else") << QByteArray("assume property (a) else $error(\"x\"); y;")
                               << QByteArray("; y;");
    QTest::newRow("with-blocks") << QByteArray(
        "cover property (a) begin b; begin c; end end else begin d; end y;")
                                 << QByteArray("; y;");
    QTest::newRow("immediate") << QByteArray("assert (a);") << QByteArray("assert (a);");
    QTest::newRow("property") << QByteArray("property p(x); x ##[1:$] y; endproperty : p z;")
                              << QByteArray("z;");
    QTest::newRow("sequence") << QByteArray("sequence s; a ##1 b; endsequence z;")
                              << QByteArray("z;");
    QTest::newRow("covergroup") << QByteArray("covergroup g @(a); endgroup z;") << QByteArray("z;");
    QTest::newRow("clocking") << QByteArray("default clocking c @(a); endclocking z;")
                              << QByteArray("z;");
    QTest::newRow("clocking-name") << QByteArray("default clocking c; z;") << QByteArray("z;");
    QTest::newRow("nameless-clocking")
        << QByteArray("global clocking @(a); endclocking z;") << QByteArray("z;");
    QTest::newRow("disable") << QByteArray("default disable iff (a); z;") << QByteArray("z;");
    QTest::newRow("let") << QByteArray("let f(x) = x; z;") << QByteArray("z;");
    QTest::newRow("old-name") << QByteArray("wire property; sequence s;")
                              << QByteArray("wire property; sequence s;");
}

void tst_VerilogText::checksGo()
{
    QFETCH(QByteArray, text);
    const QByteArray result = Standin::withoutVerificationCode(text);
    QCOMPARE(result.size(), text.size());
    QTEST(result.simplified(), "left");
}

void tst_VerilogText::lineNumbersStay()
{
    const QByteArray text = "a\nproperty p;\n`line 7 \"x\" 0\nb;\nendproperty\nc";
    QCOMPARE(Standin::withoutVerificationCode(text),
             QByteArray("a\n           \n`line 7 \"x\" 0\n  \n           \nc"));
}

void tst_VerilogText::argumentsOfMacrosAreJoined_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("joined");

    QTest::newRow("none") << QByteArray("`define M(a, b) a \\\n b\nx")
                          << QByteArray("`define M(a, b) a \\\n b\nx");
    QTest::newRow("two-lines") << QByteArray("`define M(a, \\\n b) a\nx")
                               << QByteArray("`define M(a,    b)\\\n a\nx");
    QTest::newRow("three-lines-and-defaults")
        << QByteArray("`define M(a, \\\n b = (1), \\\n c = {2}) \\\n a\nx")
        << QByteArray("`define M(a,    b = (1),    c = {2})\\\n\\\n \\\n a\nx");
    QTest::newRow("carriage-returns") << QByteArray("`define M(a, \\\r\n b) a\r\nx")
                                      << QByteArray("`define M(a,     b)\\\n a\r\nx");
    QTest::newRow("no-arguments") << QByteArray("`define M (a, \\\n b)\n")
                                  << QByteArray("`define M (a, \\\n b)\n");
    QTest::newRow("not-ended") << QByteArray("`define M(a,\n b)\n")
                               << QByteArray("`define M(a,\n b)\n");
    QTest::newRow("end-of-text") << QByteArray("`define M(a, \\\n")
                                 << QByteArray("`define M(a, \\\n");
}

/// The lines behind keep their numbers.
void tst_VerilogText::argumentsOfMacrosAreJoined()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, joined);
    QCOMPARE(Standin::withJoinedArguments(text), joined);
    QCOMPARE(joined.count('\n'), text.count('\n'));
}

void tst_VerilogText::includesOfOneLineFollowOneAnother()
{
    const QByteArray text =
        "`include \"a`include <b>\" `include <c> `include \"open\n`include \"d\"";
    QStringList names;
    int behind = 0;
    for (const Standin::IncludeDirective &directive : Standin::includeDirectives(text)) {
        names.append(directive.name);
        QVERIFY(directive.begin >= behind);
        QCOMPARE(QString::fromUtf8(text.mid(directive.begin, directive.end - directive.begin)),
                 directive.name);
        behind = directive.end;
    }
    QCOMPARE(names, QStringList({"a`include <b>", "c", "d"}));
}

MOLK_TEST_GUILESS_MAIN(tst_VerilogText)
#include "tst_verilogtext.moc"
