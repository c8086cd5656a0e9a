"""East Asia: days by law, and where another source has others. __init__.py says how they are written."""

LAW_DAYS = [
    ("China", "2007-04-05", None, "国务院令第513号 holds from 2008"),
    ("China", "2008-04-04", "清明节", "国务院令第513号"),
    ("China", "2020-10-08", "国庆节（调休）", "the notice for 2020"),
    ("China", "2024-02-09", None, "国务院令第795号 holds from 2025"),
    ("China", "2025-01-28", "农历除夕", "国务院令第795号"),
    ("China", "2033-09-08", "中秋节", "the leap month of that year comes after it"),
    ("Japan", "2019-04-30", "国民の休日", "平成30年法律第99号"),
    ("Japan", "2019-05-01", "天皇の即位の日", "平成30年法律第99号"),
    ("Japan", "2019-10-22", "即位礼正殿の儀の行われる日", "平成30年法律第99号"),
    ("Japan", "2019-12-23", None, "平成29年法律第63号"),
    ("Japan", "2020-07-24", "スポーツの日", "平成30年法律第55号"),
    ("Japan", "2021-08-08", "山の日", "令和2年法律第68号"),
    ("Japan", "2021-08-09", "振替休日", "令和2年法律第68号"),
    ("Japan", "2026-03-20", "春分の日", "令和8年暦要項"),
    ("Japan", "2026-09-22", "国民の休日", "令和8年暦要項"),
    ("Japan", "2026-09-23", "秋分の日", "令和8年暦要項"),
    ("Japan", "2027-03-21", "春分の日", "令和9年暦要項"),
    ("Japan", "2027-03-22", "振替休日", "令和9年暦要項"),
    ("SouthKorea", "2017-10-06", "추석 전날 대체공휴일", "규정 제3조: with 개천절"),
    ("SouthKorea", "2021-08-16", "광복절 대체공휴일", "공휴일에 관한 법률"),
    ("SouthKorea", "2025-01-27", "임시공휴일", "decided by the cabinet"),
    ("SouthKorea", "2025-05-06", "부처님오신날 대체공휴일", "규정 제3조: with 어린이날"),
    ("SouthKorea", "2026-07-17", "제헌절", "the law of January 2026"),
]

DIFFERENCES = {
    ("China", ""): "the source has neither substitutes nor the notices; see the days by law",
    ("SouthKorea", ""): "the source has no day before New Year and no elections; see the days by law",
}
