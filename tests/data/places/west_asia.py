"""West Asia: days by law, and where another source has others. __init__.py says how they are written."""

LAW_DAYS = [
    ("Israel", "2003-05-07", "יום העצמאות", "חוק יום העצמאות: 5 Iyar is a Wednesday"),
    ("Israel", "2004-04-27", "יום העצמאות", "חוק יום העצמאות: 5 Iyar is a Monday"),
    ("Israel", "2025-05-01", "יום העצמאות", "חוק יום העצמאות: 5 Iyar is a Saturday"),
    ("Israel", "2021-03-23", "יום הבחירות לכנסת", "חוק-יסוד: הכנסת סעיף 10"),
    ("SaudiArabia", "2011-09-24", "اليوم الوطني (يوم تعويضي)", "لائحة الإجازات المادة 4"),
    ("SaudiArabia", "2015-09-24", "عطلة عيد الأضحى", "the supreme court's announcement"),
    ("SaudiArabia", "2021-02-22", None, "الأمر الملكي أ/371 of January 2022"),
    ("SaudiArabia", "2022-09-22", "اليوم الوطني (يوم تعويضي)", "23 September is a Friday"),
    ("SaudiArabia", "2024-04-09", "عطلة عيد الفطر", "المادة 24: the day after 29 Ramadan"),
    ("SaudiArabia", "2025-02-23", "يوم التأسيس (يوم تعويضي)", "22 February is a Saturday"),
    ("Turkey", "2008-05-01", None, "5892 sayılı Kanun of April 2009"),
    ("Turkey", "2009-05-01", "Emek ve Dayanışma Günü", "5892 sayılı Kanun"),
    ("Turkey", "2016-07-05", "Ramazan Bayramı", "Diyanet İşleri Başkanlığı"),
    ("Turkey", "2016-07-08", None, "Diyanet İşleri Başkanlığı"),
    ("Turkey", "2015-09-23", None, "Diyanet İşleri Başkanlığı: half a day"),
    ("Turkey", "2017-07-15", "Demokrasi ve Milli Birlik Günü", "6752 sayılı Kanun"),
    ("UnitedArabEmirates", "2013-08-07", "عطلة عيد الفطر", "قرار 13 لسنة 2012"),
    ("UnitedArabEmirates", "2016-05-05", "الإسراء والمعراج", "the circular for 2016"),
    ("UnitedArabEmirates", "2018-11-18", "المولد النبوي الشريف", "the cabinet's decision"),
    ("UnitedArabEmirates", "2019-04-03", None, "no Isra and Miraj since 2019"),
    ("UnitedArabEmirates", "2023-09-29", "المولد النبوي الشريف", "the decision for 2023"),
    ("UnitedArabEmirates", "2024-04-08", "عطلة عيد الفطر", "29 Ramadan"),
    ("UnitedArabEmirates", "2024-12-01", None, "قرار 27 لسنة 2024"),
    ("UnitedArabEmirates", "2025-06-27", "رأس السنة الهجرية", "the decision for 2025"),
]

DIFFERENCES = {
    ("SaudiArabia", "اليوم الوطني (يوم تعويضي)"): "the day of rest in place of a weekend",
    ("SaudiArabia", "يوم التأسيس (يوم تعويضي)"): "the day of rest in place of a weekend",
    ("Turkey", "Ramazan Bayramı"): "three days and half a day",
    ("Turkey", "Kurban Bayramı"): "four days and half a day",
    ("UnitedArabEmirates", ""): "the source has days of no law and lacks others; see the days by law",
}
