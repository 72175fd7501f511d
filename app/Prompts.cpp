#include "app/Prompts.h"

namespace velmora {

namespace {
MessageRequest box(PromptIcon icon, const QString& text, const QString& title)
{
    MessageRequest request;
    request.icon = icon;
    request.text = text;
    request.title = title;
    return request;
}
} // namespace

void Prompts::message(const QString& text, const QString& title)
{
    show(box(PromptIcon::None, text, title));
}

void Prompts::information(const QString& text, const QString& title)
{
    show(box(PromptIcon::Information, text, title));
}

void Prompts::warning(const QString& text, const QString& title)
{
    show(box(PromptIcon::Warning, text, title));
}

void Prompts::critical(const QString& text, const QString& title)
{
    show(box(PromptIcon::Critical, text, title));
}

PromptAnswer Prompts::question(const QString& text, const QString& title, PromptButtons buttons,
                               PromptAnswer defaultButton)
{
    MessageRequest request = box(PromptIcon::Question, text, title);
    request.buttons = buttons;
    request.defaultButton = defaultButton;
    return show(request);
}

QString Prompts::inputBox(const QString& prompt, const QString& title, const QString& defaultAnswer)
{
    return inputBox(InputRequest{prompt, title, defaultAnswer});
}

} // namespace velmora

namespace velmora {

QString qtFileFilter(const QString& classicFilter)
{
    const QStringList parts = classicFilter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString name = parts[i].trimmed();
        QStringList patterns = parts[i + 1].split(u';', Qt::SkipEmptyParts);
        for (QString& pattern : patterns) {
            pattern = pattern.trimmed();
            if (pattern == u"*.*")
                pattern = QStringLiteral("*");
        }
        // Qt reads the patterns from the parentheses: give it ours, not the caption's.
        const qsizetype open = name.lastIndexOf(u'(');
        if (open > 0 && name.endsWith(u')'))
            name = name.left(open).trimmed();
        filters << QStringLiteral("%1 (%2)").arg(name, patterns.join(u' '));
    }
    if (parts.size() == 1 && !classicFilter.isEmpty())
        filters << classicFilter;
    return filters.join(QStringLiteral(";;"));
}

} // namespace velmora
