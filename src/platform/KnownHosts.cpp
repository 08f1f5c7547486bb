#include "platform/KnownHosts.h"

#include <algorithm>
#include <optional>

#include "platform/Environment.h"
#include "util/Text.h"

namespace tobbin {
namespace {

// The per-user settings that say whether a computer may be touched: this and its name.
constexpr char kAnswerKey[] = "Host ";
constexpr std::size_t kHostsTold = 10;

bool IsSeparator(char c) {
    return c == '\\' || c == '/';
}

// Text up to the next separator, which is taken off with it.
std::string_view TakePart(std::string_view& path) {
    const std::size_t end = std::min(path.find_first_of("\\/"), path.size());
    const std::string_view part = path.substr(0, end);
    path.remove_prefix(std::min(end + 1, path.size()));
    return part;
}

bool BeginsWithTwoSeparators(std::string_view path) {
    return path.size() > 1 && IsSeparator(path[0]) && IsSeparator(path[1]);
}

// What the system takes for a device in any folder, whatever follows behind a dot.
bool IsDevice(std::string_view part) {
    const std::string_view name = TrimBlanks(part.substr(0, part.find_first_of(".:")));
    const auto is = [name](std::string_view device) {
        return EqualsIgnoringAsciiCase(name, device);
    };
    for (const std::string_view device : {"con", "prn", "aux", "nul", "conin$", "conout$"})
        if (is(device))
            return true;
    if (name.size() < 4 || !(EqualsIgnoringAsciiCase(name.substr(0, 3), "com") ||
                             EqualsIgnoringAsciiCase(name.substr(0, 3), "lpt")))
        return false;
    const std::string_view number = name.substr(3);
    return (number.size() == 1 && number[0] >= '0' && number[0] <= '9') || number == "\xC2\xB9" ||
           number == "\xC2\xB2" || number == "\xC2\xB3";
}

}  // namespace

std::string HostOfPath(const SystemText& text, std::string_view path) {
    if (!BeginsWithTwoSeparators(path))
        return {};
    path.remove_prefix(2);
    return text.ToLower(TakePart(path));
}

bool CanBeFile(std::string_view path) {
    const char letter = path.empty() ? '\0' : path[0];
    const bool hasLetter = (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z');
    if (BeginsWithTwoSeparators(path)) {
        path.remove_prefix(2);
        const std::string_view host = TakePart(path);
        if (host.empty() || host == "." || host == ".." || host.find('?') != host.npos)
            return false;
    } else if (hasLetter && path.size() > 1 && path[1] == ':' &&
               (path.size() == 2 || IsSeparator(path[2]))) {
        path.remove_prefix(2);
    } else {
        return false;
    }
    while (!path.empty())
        if (IsDevice(TakePart(path)))
            return false;
    return true;
}

bool KnownHosts::MayTouch(const std::string& path) {
    const std::string host = HostOfPath(m_text, path);
    if (host.empty())
        return true;
    const std::scoped_lock lock(m_mutex);
    return IsKnown(host);
}

bool KnownHosts::IsKnown(const std::string& host) {
    const auto [known, isNew] = m_known.try_emplace(host, false);
    if (isNew) {
        const std::vector<std::string> mapped = m_drives.MappedHosts();
        known->second = m_settings.MaybeRead(kAnswerKey + host) == "Yes" ||
                        std::ranges::any_of(mapped, [&](const std::string& one) {
                            return m_text.ToLower(one) == host;
                        });
    }
    return known->second;
}

void KnownHosts::KnowNow(const std::string& path) {
    const std::scoped_lock lock(m_mutex);
    if (const std::string host = HostOfPath(m_text, path); !host.empty())
        m_known[host] = true;
}

void KnownHosts::Trust(const std::string& path) {
    KnowNow(path);
    if (const std::string host = HostOfPath(m_text, path); !host.empty())
        m_settings.Write(kAnswerKey + host, "Yes");
}

void KnownHosts::AskFor(Dialogs& dialogs, const std::vector<std::string>& paths,
                        const std::string& what) {
    std::set<std::string> hosts;
    {
        const std::scoped_lock lock(m_mutex);
        std::erase_if(m_known, [](const auto& known) { return !known.second; });  // mapped since?
        for (const std::string& path : paths)
            if (const std::string host = HostOfPath(m_text, path);
                !host.empty() && CanBeFile(path) && !hosts.contains(host) && !IsKnown(host) &&
                !m_settings.MaybeRead(kAnswerKey + host))
                hosts.insert(host);
    }
    if (hosts.empty())
        return;
    std::string list;
    std::size_t told = 0;
    for (const std::string& host : hosts)
        if (told++ < kHostsTold)
            list += "\\\\" + host + "\n";
    if (hosts.size() > kHostsTold)
        list += "... and " + GroupedNumber(hosts.size() - kHostsTold) + " more\n";
    const Answer answer = dialogs.Ask(
        what + " on " + (hosts.size() == 1 ? "this computer" : "these computers") +
            " of the network:\n\n" + list +
            "\nTo look there, Windows may send your user name and a proof of your password.  Do "
            "you know " +
            (hosts.size() == 1 ? "it, and shall Tobbin look there?"
                               : "them, and shall Tobbin look there?"),
        Buttons::YesNoPreferNo, BoxIcon::Question);
    const std::scoped_lock lock(m_mutex);
    for (const std::string& host : hosts) {
        m_known[host] = answer == Answer::Yes;
        m_settings.Write(kAnswerKey + host, answer == Answer::Yes ? "Yes" : "No");
    }
}

}  // namespace tobbin
