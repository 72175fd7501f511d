#include "app/TextNumbers.h"

namespace velmora {

namespace {

// Length of the number at the start of `text` (after `from`), 0 if none.
qsizetype numberLength(const QString& text, qsizetype from, bool exponent = false)
{
    qsizetype i = from;
    if (i < text.size() && (text[i] == u'-' || text[i] == u'+'))
        ++i;
    qsizetype digits = 0;
    while (i < text.size() && text[i] >= u'0' && text[i] <= u'9') {
        ++i;
        ++digits;
    }
    if (i < text.size() && text[i] == u'.') {
        qsizetype j = i + 1;
        qsizetype fraction = 0;
        while (j < text.size() && text[j] >= u'0' && text[j] <= u'9') {
            ++j;
            ++fraction;
        }
        if (digits + fraction > 0) {
            i = j;
            digits += fraction;
        }
    }
    if (exponent && digits > 0 && i < text.size() && (text[i] == u'e' || text[i] == u'E')) {
        qsizetype j = i + 1;
        if (j < text.size() && (text[j] == u'-' || text[j] == u'+'))
            ++j;
        const qsizetype first = j;
        while (j < text.size() && text[j] >= u'0' && text[j] <= u'9')
            ++j;
        if (j > first)
            i = j;
    }
    return digits > 0 ? i - from : 0;
}

qsizetype skipBlanks(const QString& text)
{
    qsizetype i = 0;
    while (i < text.size() && text[i] == u' ')
        ++i;
    return i;
}

} // namespace

double LeadingNumber(const QString& text, bool exponent)
{
    const qsizetype start = skipBlanks(text);
    const qsizetype length = numberLength(text, start, exponent);
    return length > 0 ? text.mid(start, length).toDouble() : 0.0;
}

bool IsNumeric(const QString& text)
{
    const QString trimmed = Trim(text);
    return !trimmed.isEmpty() && numberLength(trimmed, 0) == trimmed.size();
}

QString Trim(const QString& text)
{
    qsizetype from = 0;
    qsizetype to = text.size();
    while (from < to && text[from] == u' ')
        ++from;
    while (to > from && text[to - 1] == u' ')
        --to;
    return text.mid(from, to - from);
}

} // namespace velmora
