"""Names of months and weekdays, and the words that calendars have around them, by language."""

import dataclasses
import pathlib
import re

SETTINGS = pathlib.Path(__file__).resolve().parents[3] / "data" / "orrery.ini"


@dataclasses.dataclass(frozen=True)
class Names:
    """A pair of lists in one language and length. Weekdays begin with Sunday."""
    language: str
    months: tuple
    weekdays: tuple
    known: bool = True  # to the program

    @property
    def base(self):
        """The language without the length."""
        return self.language.split(",")[0]


def _read_lists(section):
    lists, inside = {}, False
    for line in SETTINGS.read_text(encoding="utf-8").splitlines():
        if line.startswith("["):
            inside = line == f"[{section}]"
        match = re.fullmatch(r"(\d+)(Name|Language)=(.*)", line)
        if inside and match:
            lists.setdefault(int(match[1]), {})[match[2]] = match[3]
    return [(entry["Language"], tuple(entry["Name"].split(","))) for _, entry in sorted(lists.items())]


MONTHS = _read_lists("MonthName")      # [(language, twelve names)]
WEEKDAYS = _read_lists("WeekdayName")  # [(language, seven names)]
MONTHS_OF, WEEKDAYS_OF = dict(MONTHS), dict(WEEKDAYS)

# How often people use which language for a template, of 100 or so.
SHARES = {
    "English": 40, "Deutsch": 14, "Français": 8, "Español": 6, "Italiano": 5, "Português": 4,
    "Nederlands": 4, "Svenska": 2, "Norsk": 1, "Dansk": 1, "Suomi": 1, "Íslenska": 1, "Polski": 3,
    "Čeština": 2, "Slovenčina": 1, "Slovenščina": 1, "Hrvatski": 1, "Magyar": 1, "Română": 1,
    "Ελληνικά": 1, "Türkçe": 2, "Русский": 3, "Українська": 1, "Gaeilge": 1, "Català": 1,
    "日本語": 5, "中文": 3, "한국어": 2,
}
# Lists that the program does not have, which people write all the same.
FOREIGN = [
    Names("עברית", ("ינואר", "פברואר", "מרץ", "אפריל", "מאי", "יוני", "יולי", "אוגוסט", "ספטמבר",
                    "אוקטובר", "נובמבר", "דצמבר"),
          ("ראשון", "שני", "שלישי", "רביעי", "חמישי", "שישי", "שבת"), known=False),
    Names("العربية", ("يناير", "فبراير", "مارس", "أبريل", "مايو", "يونيو", "يوليو", "أغسطس", "سبتمبر",
                      "أكتوبر", "نوفمبر", "ديسمبر"),
          ("الأحد", "الاثنين", "الثلاثاء", "الأربعاء", "الخميس", "الجمعة", "السبت"), known=False),
    Names("Eesti", ("jaanuar", "veebruar", "märts", "aprill", "mai", "juuni", "juuli", "august",
                    "september", "oktoober", "november", "detsember"),
          ("P", "E", "T", "K", "N", "R", "L"), known=False),
]
OTHER_LENGTHS = {  # weekday lists of other lengths, which the program has in English alone
    "English": (("Su", "Mo", "Tu", "We", "Th", "Fr", "Sa"), ("S", "M", "T", "W", "T", "F", "S"),
                ("Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat")),
    "日本語": (("日", "月", "火", "水", "木", "金", "土"),),
}

_WORDS = ("month_sheet", "year_sheet", "month", "year", "calendar", "notes", "week", "todo",
          "important", "birthdays", "holidays", "instructions")
_TEXTS = {
    "English": ("Month|Calendar|Monthly|Template|Page", "Year|Yearly|Overview|Full year", "Month",
                "Year", "Calendar", "Notes", "Wk", "To do", "Important dates", "Birthdays", "Holidays",
                "Read me"),
    "Deutsch": ("Monat|Kalender|Monatsblatt|Vorlage", "Jahr|Jahreskalender|Übersicht", "Monat", "Jahr",
                "Kalender", "Notizen", "KW", "Zu erledigen", "Wichtige Termine", "Geburtstage",
                "Feiertage", "Hinweise"),
    "Français": ("Mois|Calendrier|Modèle", "Année|Calendrier annuel", "Mois", "Année", "Calendrier",
                 "Notes", "Sem.", "À faire", "Dates importantes", "Anniversaires", "Jours fériés",
                 "Mode d'emploi"),
    "Español": ("Mes|Calendario|Plantilla", "Año|Anual", "Mes", "Año", "Calendario", "Notas", "Sem.",
                "Pendiente", "Fechas", "Cumpleaños", "Festivos", "Instrucciones"),
    "Italiano": ("Mese|Calendario|Modello", "Anno|Annuale", "Mese", "Anno", "Calendario", "Note",
                 "Sett.", "Da fare", "Date", "Compleanni", "Festività", "Istruzioni"),
    "Português": ("Mês|Calendário", "Ano|Anual", "Mês", "Ano", "Calendário", "Notas", "Sem.", "A fazer",
                  "Datas", "Aniversários", "Feriados", "Instruções"),
    "Nederlands": ("Maand|Kalender|Sjabloon", "Jaar|Jaarkalender", "Maand", "Jaar", "Kalender",
                   "Notities", "Wk", "Te doen", "Belangrijk", "Verjaardagen", "Feestdagen", "Uitleg"),
    "Polski": ("Miesiąc|Kalendarz", "Rok", "Miesiąc", "Rok", "Kalendarz", "Notatki", "Tydz.",
               "Do zrobienia", "Terminy", "Urodziny", "Święta", "Instrukcja"),
    "Русский": ("Месяц|Календарь|Шаблон", "Год", "Месяц", "Год", "Календарь", "Заметки", "Нед.", "Дела",
                "Даты", "Дни рождения", "Праздники", "Справка"),
    "日本語": ("月間|カレンダー|ひな形", "年間|年間カレンダー", "月", "年", "カレンダー", "メモ", "週", "やること", "予定", "誕生日", "祝日", "使い方"),
    "中文": ("月历|模板", "年历", "月", "年", "日历", "备注", "周", "待办", "重要日期", "生日", "节假日", "说明"),
    "한국어": ("월간|달력", "연간", "월", "년", "달력", "메모", "주", "할 일", "일정", "생일", "공휴일", "안내"),
}
NEUTRAL_SHEETS = ("Sheet1", "Sheet2", "Tabelle1", "Feuil1", "Hoja1", "Foglio1", "List1", "Blad1", "A",
                  "Print", "v2 final", "Cal (A4)", "Family '26", "工作表1")


class Words:
    """The words of a language; English where we have none."""

    def __init__(self, language):
        self._texts = dict(zip(_WORDS, _TEXTS.get(language, _TEXTS["English"])))

    def __getattr__(self, name):
        return self._texts[name]

    def sheet(self, rng, which):
        return rng.choice(self._texts[f"{which}_sheet"].split("|"))


def pick(rng):
    """The names that a template is made with."""
    if rng.random() < 0.03:
        return rng.choice(FOREIGN)
    language = rng.choices(list(SHARES), SHARES.values())[0]
    months, weekdays = MONTHS_OF[language], WEEKDAYS_OF[language]
    label = language
    short = f"{language}, short"
    if rng.random() < 0.35 and short in WEEKDAYS_OF:
        label, weekdays = short, WEEKDAYS_OF[short]
        if rng.random() < 0.35:
            months = MONTHS_OF.get(short, months)
    if language in OTHER_LENGTHS and rng.random() < 0.5:
        label, weekdays = short, rng.choice(OTHER_LENGTHS[language])
    return _in_capitals(rng, Names(label, months, weekdays))


def _in_capitals(rng, names):
    """Some people write everything in capitals, or capitalise what their language does not."""
    way = rng.choices((None, str.upper, _capital), (80, 12, 8))[0]
    if way is None or names.base in ("日本語", "中文", "한국어"):
        return names
    months, weekdays = tuple(map(way, names.months)), tuple(map(way, names.weekdays))
    known = months in MONTHS_OF.values() and weekdays in WEEKDAYS_OF.values()
    return dataclasses.replace(names, months=months, weekdays=weekdays, known=known)


def _capital(text):
    return text[:1].upper() + text[1:]
