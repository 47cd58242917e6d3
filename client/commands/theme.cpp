// SPDX-License-Identifier: BSD-3-Clause
#include "theme.h"

#include "colortext.h"
#include "invocation.h"
#include "jsonrecord.h"
#include "moodsetcommands.h"
#include "terminal.h"
#include "themetable.h"

namespace {

Outcome run(const Invocation& /*invocation*/)
{
    const Theme theme = Theme::read();
    return Outcome::done(
        themeTable(theme, standardOutputColorStyle(), Terminal::outputColumns()),
        {{QStringLiteral("theme"), JsonRecord::theme(theme)}});
}

} // namespace

Command themeCommand()
{
    return {
        "theme",
        Command::Group::Moodsets,
        QT_TRANSLATE_NOOP("Text", "show the keys of the theme, which shells and toolkits follow"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Prints the keys of the key/value store that shells and toolkits follow, "
            "with the wallpapers and the colours. The daemon need not run."),
        {},
        {},
        {{"theme", QT_TRANSLATE_NOOP("Text", "see what shells read")}},
        run};
}
