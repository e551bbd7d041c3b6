#include "freedesktop/ProgramName.h"

#include "freedesktop/ExecWords.h"

#include <QHash>
#include <QSet>
#include <algorithm>

namespace moorline {

namespace {

// A wrapper around a wrapper is common, more of them are a loop in the making.
constexpr int maximumNesting = 6;

/// How to find, among the words after a program's name, what it runs.
struct Habit {
    enum class Kind {
        /// The first word that is no option is the script.
        interpreter,
        shell,
        /// The first word that is neither an option nor a variable is a program, and what follows its arguments.
        wrapper,
        flatpak,
        snap,
        busLauncher,
    };

    Kind kind = Kind::interpreter;
    /// Options that are followed by a word of their own.
    QSet<QString> valued = {};
    /// Those of which that word is the program.
    QSet<QString> naming = {};
    /// Options after which there is no script: code follows.
    QSet<QString> code = {};
};

using Kind = Habit::Kind;

QSet<QString> words(std::initializer_list<QLatin1StringView> list)
{
    return {list.begin(), list.end()};
}

QHash<QString, Habit> makeHabits()
{
    using namespace Qt::StringLiterals;
    const Habit shell{
        .kind = Kind::shell, .valued = words({"-o"_L1, "-O"_L1, "+o"_L1, "--rcfile"_L1, "--init-file"_L1})};
    const Habit python{.valued = words({"-W"_L1, "-X"_L1}), .naming = words({"-m"_L1}), .code = words({"-c"_L1})};
    const Habit gjs{.valued = words({"-I"_L1, "-C"_L1}), .code = words({"-c"_L1, "--command"_L1})};
    const Habit java{.valued = words({"-cp"_L1, "-classpath"_L1, "--class-path"_L1, "-p"_L1, "--module-path"_L1,
                         "--upgrade-module-path"_L1, "--add-modules"_L1, "--limit-modules"_L1, "--add-exports"_L1,
                         "--add-opens"_L1, "--add-reads"_L1, "--enable-native-access"_L1}),
        .naming = words({"-jar"_L1, "-m"_L1, "--module"_L1})};
    const Habit script{
        .valued = words({"-r"_L1, "--require"_L1, "-I"_L1}), .code = words({"-e"_L1, "-E"_L1, "--eval"_L1})};
    const Habit wrapper{.kind = Kind::wrapper};

    QHash<QString, Habit> habits{
        {u"env"_s, {.kind = Kind::wrapper, .valued = words({"-u"_L1, "--unset"_L1, "-C"_L1, "--chdir"_L1})}},
        {u"nice"_s, {.kind = Kind::wrapper, .valued = words({"-n"_L1})}},
        {u"ionice"_s, {.kind = Kind::wrapper, .valued = words({"-c"_L1, "-n"_L1})}},
        {u"pkexec"_s, {.kind = Kind::wrapper, .valued = words({"--user"_L1})}},
        {u"stdbuf"_s, {.kind = Kind::wrapper, .valued = words({"-i"_L1, "-o"_L1, "-e"_L1})}},
        {u"sudo"_s, {.kind = Kind::wrapper, .valued = words({"-u"_L1, "-g"_L1, "-p"_L1})}},
        {u"java"_s, java},
        {u"flatpak"_s, {.kind = Kind::flatpak}},
        {u"snap"_s, {.kind = Kind::snap}},
        {u"gapplication"_s, {.kind = Kind::busLauncher}},
    };
    for (const auto name : {"sh"_L1, "ash"_L1, "bash"_L1, "dash"_L1, "fish"_L1, "ksh"_L1, "mksh"_L1, "zsh"_L1})
        habits.insert(name, shell);
    for (const auto name : {"python"_L1, "pypy"_L1})
        habits.insert(name, python);
    for (const auto name : {"gjs"_L1, "gjs-console"_L1, "cjs"_L1, "cjs-console"_L1})
        habits.insert(name, gjs);
    for (const auto name :
        {"electron"_L1, "guile"_L1, "lua"_L1, "luajit"_L1, "mono"_L1, "node"_L1, "nodejs"_L1, "perl"_L1, "php"_L1,
            "ruby"_L1, "tclsh"_L1, "wine"_L1, "wine-preloader"_L1, "wine64-preloader"_L1, "wish"_L1})
        habits.insert(name, script);
    for (const auto name : {"busybox"_L1, "command"_L1, "dbus-launch"_L1, "dbus-run-session"_L1, "exec"_L1,
             "firejail"_L1, "nohup"_L1, "setsid"_L1, "systemd-run"_L1, "time"_L1})
        habits.insert(name, wrapper);
    return habits;
}

const Habit *habitOf(const QString &program)
{
    static const QHash<QString, Habit> habits = makeHabits();
    const QString name = baseName(program).toLower();
    auto found = habits.constFind(name);
    if (found == habits.constEnd()) {
        // "python3.11", "electron25"
        qsizetype length = name.size();
        while (length > 0 && (name[length - 1].isDigit() || name[length - 1] == u'.'))
            --length;
        found = habits.constFind(name.left(length));
    }
    return found == habits.constEnd() ? nullptr : &*found;
}

bool isOption(const QString &word)
{
    return word.size() > 1 && (word.startsWith(u'-') || word.startsWith(u'+'));
}

bool isVariable(const QString &word)
{
    const qsizetype equals = word.indexOf(u'=');
    return equals > 0 && !word.left(equals).contains(u'/');
}

std::optional<ProgramName> programIn(const QStringList &command, int nesting);

std::optional<ProgramName> fileAt(const QStringList &words, qsizetype index)
{
    if (index >= words.size() || words[index].isEmpty())
        return std::nullopt;
    return ProgramName{.name = words[index], .arguments = words.mid(index + 1)};
}

std::optional<ProgramName> scriptIn(const QStringList &words, const Habit &habit)
{
    for (qsizetype i = 1; i < words.size(); ++i) {
        if (habit.code.contains(words[i]))
            return std::nullopt;
        if (habit.naming.contains(words[i]))
            return fileAt(words, i + 1);
        if (habit.valued.contains(words[i]))
            ++i;
        else if (!isOption(words[i]))
            return fileAt(words, i);
    }
    return std::nullopt;
}

bool isOperator(const QString &word)
{
    return word.contains(u'|') || word.contains(u';') || word.contains(u'&') || word.contains(u'<')
        || word.contains(u'>') || word.contains(u'`') || word.startsWith(u"$(");
}

/// Of a line of shell that does more than to run one program, nobody knows which one counts.
std::optional<ProgramName> programInLine(const QString &line, int nesting)
{
    QStringList words = execWords(line);
    if (std::any_of(words.cbegin(), words.cend(), isOperator))
        return std::nullopt;
    while (!words.isEmpty() && isVariable(words.first()))
        words.removeFirst();
    return programIn(words, nesting + 1);
}

std::optional<ProgramName> shellProgramIn(const QStringList &words, const Habit &habit, int nesting)
{
    bool isLine = false;
    for (qsizetype i = 1; i < words.size(); ++i) {
        const QString &word = words[i];
        if (habit.valued.contains(word))
            ++i;
        else if (isOption(word))
            isLine = isLine || (!word.startsWith(u"--") && word.contains(u'c'));
        else
            return isLine ? programInLine(word, nesting) : fileAt(words, i);
    }
    return std::nullopt;
}

std::optional<ProgramName> wrappedProgramIn(const QStringList &words, const Habit &habit, int nesting)
{
    for (qsizetype i = 1; i < words.size(); ++i) {
        if (habit.valued.contains(words[i]))
            ++i;
        else if (!isOption(words[i]) && !isVariable(words[i]))
            return programIn(words.mid(i), nesting + 1);
    }
    return std::nullopt;
}

/// "run", then options, then the name.
std::optional<ProgramName> sandboxedProgramIn(const QStringList &words, ProgramName::Kind kind)
{
    const qsizetype run = words.indexOf(QStringLiteral("run"), 1);
    if (run < 0)
        return std::nullopt;
    for (qsizetype i = run + 1; i < words.size(); ++i) {
        // What follows an option may be its value; the name of a Flatpak has dots in it.
        const bool isName = !isOption(words[i]) && (kind == ProgramName::Kind::snap || words[i].count(u'.') > 1);
        if (!isName)
            continue;
        const QChar end = kind == ProgramName::Kind::snap ? u'.' : u'/';
        return ProgramName{.kind = kind, .name = words[i].section(end, 0, 0), .arguments = words.mid(i + 1)};
    }
    return std::nullopt;
}

std::optional<ProgramName> launchedNameIn(const QStringList &words)
{
    const bool names = words.size() > 2 && (words[1] == u"launch" || words[1] == u"action");
    if (!names)
        return std::nullopt;
    return ProgramName{.kind = ProgramName::Kind::busName, .name = words[2], .arguments = words.mid(3)};
}

std::optional<ProgramName> programBehind(const QStringList &words, const Habit &habit, int nesting)
{
    switch (habit.kind) {
    case Kind::interpreter:
        return scriptIn(words, habit);
    case Kind::shell:
        return shellProgramIn(words, habit, nesting);
    case Kind::wrapper:
        return wrappedProgramIn(words, habit, nesting);
    case Kind::flatpak:
        return sandboxedProgramIn(words, ProgramName::Kind::flatpak);
    case Kind::snap:
        return sandboxedProgramIn(words, ProgramName::Kind::snap);
    case Kind::busLauncher:
        return launchedNameIn(words);
    }
    Q_UNREACHABLE();
}

/// What the snap tools put into the search path runs the snap of that name.
std::optional<QString> snapRunBy(const QString &program)
{
    if (!program.startsWith(u"/snap/bin/") && !program.startsWith(u"/var/lib/snapd/snap/bin/"))
        return std::nullopt;
    return baseName(program).section(u'.', 0, 0);
}

std::optional<ProgramName> programIn(const QStringList &command, int nesting)
{
    if (command.isEmpty() || command.first().isEmpty() || nesting > maximumNesting)
        return std::nullopt;
    if (const auto snap = snapRunBy(command.first()))
        return ProgramName{.kind = ProgramName::Kind::snap, .name = *snap, .arguments = command.mid(1)};
    if (const Habit *habit = habitOf(command.first()))
        return programBehind(command, *habit, nesting);
    return fileAt(command, 0);
}

} // namespace

std::optional<ProgramName> programOf(const QStringList &command)
{
    return programIn(command, 0);
}

bool isInterpreter(const QString &name)
{
    return habitOf(name) != nullptr;
}

bool isShell(const QString &name)
{
    const Habit *habit = habitOf(name);
    return habit && habit->kind == Kind::shell;
}

QString baseName(const QString &path)
{
    return path.section(u'/', -1);
}

} // namespace moorline
