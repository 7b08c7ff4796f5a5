#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>

// What every fuzz target shares: a prompt that answers without a word, and
// a scratch folder that lives as long as the process.

// Installs the silent prompt, makes the scratch folder the program's
// directory too, and returns it, ending with "/".
QString fuzzWorkDir();

QByteArray fuzzInput(const uint8_t *data, size_t size);
void writeFuzzFile(const QString &path, const QByteArray &bytes);
QByteArray readFuzzFile(const QString &path);
