"""The pairs of number format codes and values that the check compares."""

import html
import re
import zipfile

import xlrd

NUMBERS = [0, 1, -1, 5, 9.5, 0.5, -0.5, 12, 12.3456789, 123.456, -123.456, 1234.5, -1234.567, 12345,
           1234567.891, 0.001234, -0.004, 0.999, 99.995, 1.005, 2.675, 1e-7, 123456789012, 1.5e10, 1.23e20]
DATES = [61, 366, 36526.5, 39448.99, 41275.0416666667, 43466, 43524.75, 44000.6, 44196.999988,
         44255.123456, 44320.0006944444, 44561.5138888889, 45000.987654321]
EARLY_DATES = [0, 0.25, 1, 59, 60.25]
NAME_DATES = [43466, 43524.75, 43952, 44000.6, 44196.5]
TIMES = [0, 0.25, 0.5, 0.0416666666666667, 0.520833333333334, 0.99999, 1.5, 2.75, 100.041666666667]
FRACTIONS = [0, 1, 0.5, 0.25, 0.3333333333, 0.125, 3.14159265358979, 12.0625, -1.75, 0.999, 0.01,
             1234.56, 0.7, 5.0000000001]
TEXTS = ["text", "a b"]

RARE_NUMBERS = [0, 0.5, -1.5, 9.5, 1234.5]
NUMBER_CODES = """
0|#|?|00|000|##|0#|#0|?0|??|0.0|0.00|0.000|#.#|#.##|.00|.##|?.?|0.0?|0.??|??0.0??|#.0#
#,##0|#,##0.00|#,###|0,000|0000,000|?,???|#,##0.0#|#,##0.###|0,0.0
0,|0,,|#,##0,|0.0,|0.00,,|#,##0.0,"k"|0.0,,"M"|#,##0.00,,,|0.0," x"
0%|0.0%|0.00%|#%|%0|0%%|#,##0%|0.##%|"p" 0%
0E+0|0.0E+0|0.00E+00|##0.0E+0|#0.0E+0|000.0E+00|0.00E-00|0.###E+0|##0E+0|0E-0|00.0E+000
000-00-0000|(000) 000-0000|00\\-00|0"a"0|0" x "0.0"y"|$0.00|-0|+0|(0)|0:00|#-#-#|0/0"x"|!0|'0'|{0}|<0>|=0|~0|^0|&0
0.00;(0.00)|0;-0|0;-0;"zero"|0;;|;0|;;|0;"neg"|0.0;-0.0;0.0;@|"a";"b";"c";"d"|0;0|0;-0;;@|#,##0;[Red]-#,##0|0;
"+"0;"-"0;0|0" up";0" down";"flat"|"x"|"pos";"neg"
[>100]0.0;0|[>=100]"big";"small"|[<0]0.0;0|[<=-5]"low";0.0|[=1]"one";0|[=1]"one";[=2]"two";0|[>100]"H";[<10]"L";"M"|[<>5]0;"five"
[>1000]0.0,"K";0|[>1000000]0.0,,"M";[>1000]0.0,"K";0|[Red][<0]0;[Blue][>0]0;0|[>5]0;[<-5]-0;"mid"
[Red]0|[Color 3]0|[color10]0.0|[Blue]0;[Magenta]-0|[Cyan]General
_(0_)|_-0_-|* 0|0* |"$"* 0.00|_($* #,##0.00_)|*-0|0*x
[$€-2] 0|0.00 [$€-1]|[$USD] 0|[$-409]0.00|[$$-409]0|[$£-809]0.00;-[$£-809]0.00|[$kr-41D] 0|[$¥-411]0
General|"n" General|General" units"|General;-General|General;(General)|General;-General;"zero"|[Red]General|-General|"a"General"b"
General\\ \\d\\a\\y\\s|0\\d|0\\ \\%|\\#0|0"%"
#\\ ##0|# ##0|#\\ ###\\ ##0|0\\.0|#" "##0.00|0.00\\ 00|0.000\\ 000
"""
RARE_CODES = '0,.0|0.0e+00|.00E+00|.0E+0|[$€-407]0.00|0.#0|#,#|0.|0_x0|#E+0|0!0|0..0|0.0.0|[ss].00'
FRACTION_CODES = """
# ?/?|# ??/??|# ???/???|?/?|??/??|#?/?|# #/#|# ##/##|# 0/0|# 00/00|0 ?/?|0/0|# ?/2|# ?/4|# ?/8|# ??/16|# ?/10|# ??/100|?/8
# ????/????|#,##0 ?/?|#" "?/?|#\\ ?/?|# ?/?" in"|"L "# ?/?|# ?/?;(# ?/?)|?? ?/?
"""
DATE_CODES = """
yyyy-mm-dd|yy|yyy|yyyy|y|m|mm|mmm|mmmm|mmmmm|d|dd|ddd|dddd|d/m/yy|m/d/yyyy|dd.mm.yyyy|d. mmmm yyyy|mmm-yy|d-mmm|d-mmm-yy
dddd, mmmm d, yyyy|ddd d mmm|yyyymmdd|"Week of "d mmmm|mmmm yyyy|yyyy"年"m"月"d"日"|dd" de "mmmm|mmm d|mmmm\\ yyyy|DD/MM/YYYY
d;@|d;;|[Red]d|dd\\.mm\\.|yyyy/mm/dd hh:mm|m/d/yy h:mm|d mmm h:mm AM/PM|hh:mm dd.mm|yyyy-mm-dd"T"hh:mm:ss
"""
NAME_CODES = """
[$-409]d mmmm yyyy|[$-407]dddd, d. mmmm yyyy|[$-40C]dddd d mmmm yyyy|[$-410]dddd d mmmm yyyy|[$-413]dddd d mmmm yyyy
[$-C0A]dddd d mmmm yyyy|[$-816]dddd d mmmm yyyy|[$-416]d mmmm|[$-405]mmmm yyyy|[$-415]mmmm|[$-419]mmmm yyyy|[$-40E]mmmm|[$-40B]dddd
[$-41D]dddd d mmmm|[$-406]dddd d mmmm|[$-414]dddd d mmmm|[$-41F]dddd d mmmm|[$-408]dddd|[$-409]ddd|[$-409]mmm|[$-407]mmmm|[$-40C]mmm
[$-411]dddd|[$-804]dddd|[$-412]dddd|[$-404]dddd|[$-409]mmmmm|[$-40C]mmmmm|[$-407]ddd|[$-C0A]ddd|[$-410]ddd|[$-41F]mmmm|[$-424]mmmm
[$-41A]dddd|[$-41B]dddd|[$-402]dddd|[$-425]mmmm|[$-426]dddd|[$-427]dddd|[$-418]mmmm|[$-422]dddd|[$-41E]mmmm|[$-421]mmmm
[$-809]d mmmm yyyy|[$-C09]dddd d mmmm|[$-1009]mmmm d, yyyy|[$-en-US]mmmm|[$-x-sysdate]dddd, mmmm dd, yyyy
[$-F800]dddd, mmmm dd, yyyy|[$-404]e"年"m"月"|[$-411]ggge"年"m"月"d"日"|[$-411]gge.m.d|[$-411]ge.m.d|bbbb|bb|e|[$-419]d mmmm yyyy|[$-415]d mmmm yyyy
[DBNum1][$-804]yyyy"年"m"月"d"日"|[DBNum1][$-411]ggge"年"m"月"|[DBNum2][$-804]m"月"d"日"
[$-405]d. mmmm yyyy|[$-408]d mmmm yyyy|[$-FC19]d mmmm yyyy|[$-41B]d. mmmm yyyy|[$-422]d mmmm yyyy
"""
EARLY_CODES = "yyyy-mm-dd|d|mmm-yy|dddd|m/d/yy h:mm|[$-407]mmmm|[h]:mm"
TIME_CODES = """
h:mm|hh:mm|h:mm:ss|hh:mm:ss|h:mm AM/PM|hh:mm:ss AM/PM|h AM/PM|h:mm A/P|h a/p|h am/pm|mm:ss|mm:ss.0|mm:ss.00|ss.000|ss|s|h|hh|m:ss|h"h"mm|h.mm
[h]:mm|[hh]:mm:ss|[h]|[mm]:ss|[m]|[ss]|[s]|[ss].00|[mm]:ss.0|[h]:mm:ss.000|d "days" h:mm|[h]"h "mm"m"|[$-F400]h:mm:ss AM/PM|[$-409]h:mm AM/PM;@|d h|hh"-"mm
"""
TEXT_CODES = ["General", "@", "0", "0;-0;0;@", "0;-0;0;\"t: \"@", "@\" x\"", "\"<\"@\">\"", "0;@", "0;-0;@", "@@",
              "0;0;0;\"fixed\"", ";;;", ";;;@", "[Red]@", "_(@_)", "* @", "yyyy", "yyyy;@", "0.00;[Red]-0.00"]


def _codes(text):
    return [code for line in text.strip().splitlines() for code in _split(line.replace("\\\\", "\\"))]


def _split(line):
    return re.findall(r'(?:"[^"]*"|[^|"])+', line)


def own_pairs():
    pairs = []
    for codes, values in ((NUMBER_CODES, NUMBERS), (RARE_CODES, RARE_NUMBERS), (FRACTION_CODES, FRACTIONS), (DATE_CODES, DATES),
                          (NAME_CODES, NAME_DATES), (EARLY_CODES, EARLY_DATES),
                          (TIME_CODES, TIMES + DATES[5:9])):
        pairs += [(code, value) for code in _codes(codes) for value in values]
    pairs += [(code, value) for code in TEXT_CODES for value in [*TEXTS, 5, -5.5, 0]]
    return pairs


def corpus_codes(folder):
    """Every code of the workbooks below the folder."""
    codes = set()
    for path in sorted((folder / "xlsx").glob("**/*.xls[xm]")):
        codes |= _package_codes(path)
    for path in sorted((folder / "xls").glob("**/*.xls")):
        codes |= _record_codes(path)
    return {code for code in codes if code and "\n" not in code and "\t" not in code}


def _package_codes(path):
    codes = set()
    try:
        with zipfile.ZipFile(path) as package:
            for name in package.namelist():
                if re.fullmatch(r"(?i)xl/styles[^/]*\.xml", name):
                    text = package.read(name).decode("utf-8", "replace")
                    codes |= set(map(html.unescape, re.findall(r'\bformatCode="([^"]*)"', text)))
    except zipfile.BadZipFile:
        pass
    return codes


def _record_codes(path):
    try:
        with open("/dev/null", "w", encoding="utf-8") as log:
            book = xlrd.open_workbook(path, formatting_info=True, logfile=log)
    except Exception:  # pylint: disable=broad-except  # what xlrd cannot read has no codes for us
        return set()
    return {entry.format_str for entry in book.format_map.values() if entry.format_str}


def corpus_pairs(folder):
    """Each code with values that suit it."""
    pairs = []
    for code in sorted(corpus_codes(folder)):
        plain = re.sub(r'"[^"]*"|\\.|\[[^]]*\]|_.|\*.', "", code)
        is_date = re.search(r"[ymdhs]", plain.lower().replace("general", ""))
        values = DATES if is_date else NUMBERS[:10] + NUMBERS[12:16]
        pairs += [(code, value) for value in [*values, "text"]]
    return pairs
