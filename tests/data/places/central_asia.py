"""Central Asia: days by law, and where another source has others. __init__.py says how they are written."""

LAW_DAYS = [
    ("Kazakhstan", "2020-05-08", "Ауыстырылған демалыс күні", "the government's decision for 2020"),
    ("Kazakhstan", "2020-05-11", None, "moved to 8 May 2020"),
    ("Kazakhstan", "2021-12-01", "Қазақстан Республикасының Тұңғыш...", "№ 267-II Заңы until 2021"),
    ("Kazakhstan", "2022-12-01", None, "№ 267-II Заңы as amended in 2022"),
    ("Kazakhstan", "2022-10-25", "Республика күні", "№ 267-II Заңы as amended in 2022"),
    ("Kazakhstan", "2026-10-25", "Қазақстан Республикасы күні", "№ 267-II Заңы as amended in 2026"),
    ("Kyrgyzstan", "2024-11-07", "Тарых жана ата-бабаларды...", "Закон 190 of 20.11.2017"),
    ("Kyrgyzstan", "2025-11-07", None, "Эмгек кодекси of 23.01.2025"),
    ("Kyrgyzstan", "2026-01-05", "Жаңы жылдык каникулдар", "Эмгек кодекси of 23.01.2025"),
    ("Kyrgyzstan", "2019-05-06", None, "moved to 10 May 2019"),
    (
        "Kyrgyzstan",
        "2026-01-09",
        "Которулган эс алуу күнү",
        "the cabinet's decision of December 2025",
    ),
    ("Mongolia", "2019-02-07", "Цагаан сар", "хууль 4 дүгээр зүйл: 5 to 7 February 2019"),
    ("Mongolia", "2020-06-05", "Бурхан багшийн Их дүйчин өдөр", "the amendment of December 2019"),
    ("Mongolia", "2025-03-04", None, "1 and 2 March are a weekend"),
    ("Mongolia", "2018-11-08", "Их Эзэн Чингис хааны өдөр", "хууль 4 дүгээр зүйл"),
    ("Mongolia", "2022-07-10", "Үндэсний их баяр наадам", "the amendment of 28 June 2022"),
    ("Tajikistan", "2015-03-26", "Иди байналмилалии Наврӯз...", "21 and 22 March are a weekend"),
    ("Tajikistan", "2017-01-02", "Соли Нав (рӯзи истироҳат)", "1 January is a Sunday"),
    ("Tajikistan", "2017-05-01", None, "Закон № 1390 of 24.02.2017"),
    ("Turkmenistan", "2013-10-17", "Gurban baýramy", "the decree: 15 to 17 October"),
    ("Turkmenistan", "2017-09-05", "Gurban baýramy (dynç güni)", "the decree moves 3 September"),
    ("Turkmenistan", "2025-06-09", "Gurban baýramy (dynç güni)", "the decree moves 8 June"),
    ("Turkmenistan", "2018-05-09", None, "81-nji madda as of October 2017"),
    ("Uzbekistan", "2022-10-03", None, "208-modda holds since 30 April 2023"),
    ("Uzbekistan", "2023-10-02", "Oʻqituvchi va murabbiylar kuni...", "208-modda"),
    ("Uzbekistan", "2025-12-31", "Qoʻshimcha dam olish kuni", "the decree for 2025"),
]

DIFFERENCES = {
    ("Kazakhstan", ""): "the source lacks moved days and has Constitution Day in 2026",
    ("Uzbekistan", ""): "the source lacks the days off by decree",
}
