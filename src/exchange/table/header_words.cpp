#include "exchange/table/header_words.h"

#include "exchange/table/date_words.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>

namespace orrery::exchange {
namespace {

constexpr std::array<std::string_view, 29> kStartWords = {
    "start",      "starts",  "begin", "begins", "beginning", "from",  "date",  "day",
    "datum",      "beginn",  "von",   "ab",     "tag",       "début", "debut", "du",
    "inicio",     "início",  "fecha", "desde",  "inizio",    "dal",   "data",  "van",
    "start_date", "dtstart", "fra",   "från",   "od"};
constexpr std::array<std::string_view, 24> kEndWords = {
    "end", "ends",  "ending", "until", "till",  "to",   "ende",     "bis",
    "fin", "jusqu", "au",     "final", "hasta", "fine", "al",       "fim",
    "até", "einde", "tot",    "slut",  "til",   "till", "end_date", "do"};
constexpr std::array<std::string_view, 33> kNameWords = {
    "name",        "subject", "title",     "event",  "holiday", "summary",  "occasion",
    "what",        "betreff", "titel",     "thema",  "anlass",  "feiertag", "ereignis",
    "bezeichnung", "termin",  "nom",       "sujet",  "titre",   "objet",    "événement",
    "fête",        "nombre",  "asunto",    "título", "evento",  "festivo",  "nome",
    "oggetto",     "titolo",  "onderwerp", "naam",   "nazwa"};
constexpr std::array<std::string_view, 12> kTimeWords = {
    "time", "uhrzeit", "zeit",    "heure",      "hora",    "ora",
    "tijd", "tid",     "godzina", "beginnzeit", "endzeit", "startzeit"};

bool Has(std::span<const std::string_view> words, std::string_view header)
{
    std::string word;
    for (const char c : std::string(header) + ' ') {
        constexpr std::string_view between = " \t.:/-()'?\"";
        if (between.find(c) == std::string_view::npos) {
            word += c;
            continue;
        }
        if (std::find(words.begin(), words.end(), FoldWord(word)) != words.end())
            return true;
        word.clear();
    }
    return false;
}

/// One word of German often says all of it: "Enddatum".
bool IsCompound(std::string_view header, std::string_view begin)
{
    const std::string word = FoldWord(header);
    return word.starts_with(begin) && (word.ends_with("datum") || word.ends_with("date"));
}

} // namespace

bool IsHeader(HeaderWord word, std::string_view header)
{
    constexpr std::size_t longest = 64;
    if (header.size() > longest || Has(kTimeWords, header))
        return false;
    const bool isEnd = Has(kEndWords, header) || IsCompound(header, "end");
    switch (word) {
    case HeaderWord::End:
        return isEnd;
    case HeaderWord::Start:
        return !isEnd && (Has(kStartWords, header) || IsCompound(header, "start") ||
                          IsCompound(header, "anfang"));
    case HeaderWord::Name:
        return Has(kNameWords, header);
    }
    return false;
}

} // namespace orrery::exchange
