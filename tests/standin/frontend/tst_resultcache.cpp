// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "frontend/resultcache.h"
#include "frontend/toolbox.h"
#include "testmain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <functional>
#include <sys/stat.h>
#include <unistd.h>

using Standin::KeptReading;

class tst_ResultCache : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void storedReadingIsFound();
    void readingWithoutArtifactIsFound();
    void otherKeyIsNotFound();
    void damagedFileDoesNotCount_data();
    void damagedFileDoesNotCount();
    void fileOfAnotherKeyDoesNotCount();
    void othersMustNotBeAbleToWrite();
    void fileOfAnotherOwnerIsNotFound();
    void linkIsNotFollowed();
    void oldestGoesFirst();
    void zeroBytesKeepNothing();
    void changedDependencyIsNoticed();
    void appearedFileIsNoticed();
    void keyDependsOnEverything_data();
    void keyDependsOnEverything();

private:
    KeptReading sample(const QByteArray &artifact);
    QString entry(const QByteArray &key) const;
    bool find(const QByteArray &key) const;

    std::unique_ptr<QTemporaryDir> directory;
    QString cachePath;
};

static bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

static QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void tst_ResultCache::init()
{
    directory = std::make_unique<QTemporaryDir>();
    cachePath = directory->filePath("cache/deep");
}

KeptReading tst_ResultCache::sample(const QByteArray &artifact)
{
    KeptReading reading;
    reading.lists.topModules = QStringList{"top"};
    reading.lists.modules = QStringList{"leaf", "top"};
    reading.messages = QStringList{"WARNING: x"};
    reading.dependencies = {{"/a/b.vh", "hash"}};
    reading.absentFiles = QStringList{"/a/c.vh"};
    reading.artifact.file = directory->filePath("in");
    reading.artifact.top = "top";
    reading.artifact.vhdlFiles = QStringList{"vhdl1.v"};
    reading.artifact.sourceNames = {{"leaf_8", "leaf"}};
    writeFile(reading.artifact.file, artifact);
    return reading;
}

QString tst_ResultCache::entry(const QByteArray &key) const
{
    return cachePath + '/' + QString::fromLatin1(key.toHex()) + ".reading";
}

bool tst_ResultCache::find(const QByteArray &key) const
{
    KeptReading found;
    return Standin::ResultCache(cachePath, 1 << 20).find(key, directory->filePath("out"), &found);
}

void tst_ResultCache::storedReadingIsFound()
{
    const Standin::ResultCache cache(cachePath, 1 << 20);
    const KeptReading reading = sample("<xml/>");
    cache.store("key", reading);
    KeptReading found;
    QVERIFY(cache.find("key", directory->filePath("out"), &found));
    QCOMPARE(found.lists.topModules, reading.lists.topModules);
    QCOMPARE(found.lists.modules, reading.lists.modules);
    QCOMPARE(found.messages, reading.messages);
    QCOMPARE(found.dependencies.size(), 1);
    QCOMPARE(found.dependencies.first().path, QString("/a/b.vh"));
    QCOMPARE(found.dependencies.first().hash, QByteArray("hash"));
    QCOMPARE(found.absentFiles, reading.absentFiles);
    QCOMPARE(found.artifact.file, directory->filePath("out"));
    QCOMPARE(found.artifact.top, QString("top"));
    QCOMPARE(found.artifact.vhdlFiles, reading.artifact.vhdlFiles);
    QCOMPARE(found.artifact.sourceNames, reading.artifact.sourceNames);
    QCOMPARE(readFile(found.artifact.file), QByteArray("<xml/>"));
    QCOMPARE(QFile::permissions(entry("key"))
                 & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther),
             QFile::Permissions());
}

void tst_ResultCache::readingWithoutArtifactIsFound()
{
    const Standin::ResultCache cache(cachePath, 1 << 20);
    KeptReading reading = sample("x");
    reading.artifact = Standin::Artifact();
    cache.store("key", reading);
    KeptReading found;
    QVERIFY(cache.find("key", directory->filePath("out"), &found));
    QCOMPARE(found.artifact.file, QString());
    QVERIFY(!QFile::exists(directory->filePath("out")));
}

void tst_ResultCache::otherKeyIsNotFound()
{
    QVERIFY(!find("key"));
    Standin::ResultCache(cachePath, 1 << 20).store("key", sample("x"));
    QVERIFY(find("key"));
    QVERIFY(!find("kez"));
}

void tst_ResultCache::damagedFileDoesNotCount_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("changed");

    QTest::newRow("empty") << 0 << -1;
    QTest::newRow("magic-only") << 18 << -1;
    QTest::newRow("half") << 200 << -1;
    QTest::newRow("last-byte-missing") << -1 << -1;
    QTest::newRow("magic-changed") << 1000000 << 3;
    QTest::newRow("hash-changed") << 1000000 << 20;
    QTest::newRow("body-changed") << 1000000 << 100;
    QTest::newRow("last-byte-changed") << 1000000 << -2;
}

void tst_ResultCache::damagedFileDoesNotCount()
{
    QFETCH(int, length);
    QFETCH(int, changed);
    Standin::ResultCache(cachePath, 1 << 20).store("key", sample("<xml/>"));
    QVERIFY(find("key"));
    QByteArray bytes = readFile(entry("key"));
    bytes.truncate(length < 0 ? bytes.size() - 1 : qMin(length, bytes.size()));
    if (changed != -1) {
        const int at = changed < 0 ? bytes.size() - 1 : changed;
        bytes[at] = char(bytes.at(at) ^ 1);
    }
    QVERIFY(writeFile(entry("key"), bytes));
    QVERIFY(!find("key"));
}

void tst_ResultCache::fileOfAnotherKeyDoesNotCount()
{
    Standin::ResultCache(cachePath, 1 << 20).store("key", sample("x"));
    QVERIFY(QFile::copy(entry("key"), entry("other")));
    QVERIFY(!find("other"));
}

void tst_ResultCache::othersMustNotBeAbleToWrite()
{
    Standin::ResultCache(cachePath, 1 << 20).store("key", sample("x"));
    const QByteArray file = QFile::encodeName(entry("key"));
    const QByteArray folder = QFile::encodeName(cachePath);
    QCOMPARE(::chmod(file.constData(), 0620), 0);
    QVERIFY(!find("key"));
    QCOMPARE(::chmod(file.constData(), 0600), 0);
    QVERIFY(find("key"));
    QCOMPARE(::chmod(folder.constData(), 0777), 0);
    QVERIFY(!find("key"));
    Standin::ResultCache(cachePath, 1 << 20).store("new", sample("x"));
    QVERIFY(!QFile::exists(entry("new")));
}

void tst_ResultCache::fileOfAnotherOwnerIsNotFound()
{
    Standin::ResultCache(cachePath, 1 << 20).store("key", sample("x"));
    const QByteArray file = QFile::encodeName(entry("key"));
    const bool isGivenAway = ::chown(file.constData(), 65534, 65534) == 0;
    // Only the superuser can give files away.
    QCOMPARE(isGivenAway, ::geteuid() == 0);
    QCOMPARE(find("key"), !isGivenAway);
}

void tst_ResultCache::linkIsNotFollowed()
{
    Standin::ResultCache(cachePath, 1 << 20).store("key", sample("x"));
    QVERIFY(QFile::rename(entry("key"), directory->filePath("elsewhere")));
    QVERIFY(QFile::link(directory->filePath("elsewhere"), entry("key")));
    QVERIFY(!find("key"));
}

void tst_ResultCache::oldestGoesFirst()
{
    QByteArray noise(20000, '\0');
    for (int i = 0; i < noise.size(); ++i)
        noise[i] = char((i * 7919 + i * i) >> 3);
    const Standin::ResultCache cache(cachePath, 1 << 20);
    const QDateTime now = QDateTime::currentDateTime();
    const QList<QByteArray> keys{"one", "two", "three"};
    for (int i = 0; i < keys.size(); ++i) {
        cache.store(keys.at(i), sample(noise));
        QFile file(entry(keys.at(i)));
        QVERIFY(file.open(QIODevice::ReadWrite));
        file.setFileTime(now.addSecs(i - 100), QFileDevice::FileModificationTime);
    }
    // Use makes the first the youngest.
    QVERIFY(find("one"));
    const qint64 size = QFile(entry("one")).size();
    Standin::ResultCache(cachePath, 3 * size + size / 2).store("four", sample(noise));
    QVERIFY(find("four"));
    QVERIFY(find("one"));
    QVERIFY(find("three"));
    QVERIFY(!find("two"));
}

void tst_ResultCache::zeroBytesKeepNothing()
{
    Standin::ResultCache(cachePath, 0).store("key", sample("x"));
    QVERIFY(!QFile::exists(cachePath));
}

void tst_ResultCache::changedDependencyIsNoticed()
{
    const QString path = directory->filePath("x.vh");
    QVERIFY(writeFile(path, "one"));
    KeptReading reading;
    reading.dependencies = Standin::fileStates({path}, 1 << 20);
    QVERIFY(Standin::isCurrent(reading, 1 << 20));
    QVERIFY(writeFile(path, "two"));
    QVERIFY(!Standin::isCurrent(reading, 1 << 20));
    QVERIFY(writeFile(path, "one"));
    QVERIFY(Standin::isCurrent(reading, 1 << 20));
    QVERIFY(QFile::remove(path));
    QVERIFY(!Standin::isCurrent(reading, 1 << 20));
    reading.dependencies = Standin::fileStates({path}, 1 << 20);
    QVERIFY(!Standin::isCurrent(reading, 1 << 20));
}

void tst_ResultCache::appearedFileIsNoticed()
{
    KeptReading reading;
    reading.absentFiles = QStringList{directory->filePath("y.vh")};
    QVERIFY(Standin::isCurrent(reading, 1 << 20));
    QVERIFY(writeFile(directory->filePath("y.vh"), ""));
    QVERIFY(!Standin::isCurrent(reading, 1 << 20));
}

using Change = std::function<void(Standin::DesignSources &, Standin::ExtractionOptions &)>;
Q_DECLARE_METATYPE(Change)

void tst_ResultCache::keyDependsOnEverything_data()
{
    QTest::addColumn<Change>("change");
    using Sources = Standin::DesignSources;
    using Options = Standin::ExtractionOptions;

    QTest::newRow("top") << Change([](Sources &s, Options &) { s.top = "x"; });
    QTest::newRow("text") << Change([](Sources &s, Options &) { s.files[0].text = "x"; });
    QTest::newRow("path") << Change([](Sources &s, Options &) { s.files[0].path = "/x"; });
    QTest::newRow("order") << Change(
        [](Sources &s, Options &) { std::swap(s.files[0], s.files[1]); });
    QTest::newRow("language") << Change(
        [](Sources &s, Options &) { s.files[0].language = Standin::SourceFile::SystemVerilog; });
    QTest::newRow("standard") << Change(
        [](Sources &s, Options &) { s.files[0].standard = "1364-2001"; });
    QTest::newRow("library") << Change([](Sources &s, Options &) { s.files[0].library = "l"; });
    QTest::newRow("file-define") << Change([](Sources &s, Options &) {
        s.files[0].defines = {{"A", "1"}};
    });
    QTest::newRow("define") << Change([](Sources &s, Options &) { s.defines = {{"A", "1"}}; });
    QTest::newRow("parameter") << Change([](Sources &s, Options &) {
        s.parameters = {{"A", "1"}};
    });
    QTest::newRow("generic") << Change([](Sources &s, Options &) { s.generics = {{"A", "1"}}; });
    QTest::newRow("include-path") << Change(
        [](Sources &s, Options &) { s.includePath = QStringList{"/i"}; });
    QTest::newRow("tool") << Change([](Sources &, Options &o) { o.verilator = "/bin/true"; });
}

void tst_ResultCache::keyDependsOnEverything()
{
    QFETCH(Change, change);
    Standin::DesignSources sources;
    sources.files.resize(2);
    sources.files[0].path = "/a.v";
    sources.files[0].text = "a";
    sources.files[1].path = "/b.v";
    Standin::ExtractionOptions options;
    options.verilator = "/bin/sh";
    const Standin::FrontEnd &frontEnd = *Standin::frontEnds().back();
    const QByteArray before = Standin::readingKey(sources, frontEnd, Standin::ToolBox(options));
    QCOMPARE(Standin::readingKey(sources, frontEnd, Standin::ToolBox(options)), before);
    change(sources, options);
    QVERIFY(Standin::readingKey(sources, frontEnd, Standin::ToolBox(options)) != before);
}

MOLK_TEST_GUILESS_MAIN(tst_ResultCache)
#include "tst_resultcache.moc"
