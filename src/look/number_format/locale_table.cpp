// Written by scripts/make_locale_names.py from the data of ICU 72.1.

#include "look/number_format/locale_table.h"

#include <array>

namespace orrery::look {
namespace {

// clang-format off
constexpr std::array<LocaleEntry, 60> kLocales{{
    {0x0401, "ar-SA", 0},
    {0x0402, "bg-BG", 647},
    {0x0403, "ca-ES", 1233},
    {0x0404, "zh-TW", 1593},
    {0x0405, "cs-CZ", 2030},
    {0x0406, "da-DK", 2371},
    {0x0407, "de-DE", 2702},
    {0x0408, "el-GR", 3033},
    {0x0409, "en-US", 3754},
    {0x040A, "es-ES", 4098},
    {0x040B, "fi-FI", 4451},
    {0x040C, "fr-FR", 4882},
    {0x040D, "he-IL", 5243},
    {0x040E, "hu-HU", 5823},
    {0x040F, "is-IS", 6206},
    {0x0410, "it-IT", 6604},
    {0x0411, "ja-JP", 6962},
    {0x0412, "ko-KR", 7291},
    {0x0413, "nl-NL", 7629},
    {0x0414, "nb-NO", 7965},
    {0x0415, "pl-PL", 8299},
    {0x0416, "pt-BR", 8675},
    {0x0418, "ro-RO", 9056},
    {0x0419, "ru-RU", 9420},
    {0x041A, "hr-HR", 9995},
    {0x041B, "sk-SK", 10366},
    {0x041C, "sq-AL", 10710},
    {0x041D, "sv-SE", 11051},
    {0x041E, "th-TH", 11388},
    {0x041F, "tr-TR", 12255},
    {0x0421, "id-ID", 12589},
    {0x0422, "uk-UA", 12916},
    {0x0423, "be-BY", 13522},
    {0x0424, "sl-SI", 14147},
    {0x0425, "et-EE", 14487},
    {0x0426, "lv-LV", 14849},
    {0x0427, "lt-LT", 15305},
    {0x0429, "fa-IR", 15741},
    {0x042A, "vi-VN", 16379},
    {0x042D, "eu-ES", 16819},
    {0x042F, "mk-MK", 17194},
    {0x0436, "af-ZA", 17781},
    {0x0437, "ka-GE", 18125},
    {0x0439, "hi-IN", 19068},
    {0x043E, "ms-MY", 19883},
    {0x0456, "gl-ES", 20204},
    {0x0804, "zh-CN", 20560},
    {0x0807, "de-CH", 20965},
    {0x0809, "en-GB", 21297},
    {0x080A, "es-MX", 21635},
    {0x0814, "nn-NO", 21989},
    {0x0816, "pt-PT", 22316},
    {0x081A, "sr-Latn-CS", 22697},
    {0x0C04, "zh-HK", 23026},
    {0x0C07, "de-AT", 23462},
    {0x0C09, "en-AU", 23797},
    {0x0C0A, "es-ES", 24140},
    {0x0C0C, "fr-CA", 24493},
    {0x0C1A, "sr-Cyrl-CS", 24869},
    {0x1009, "en-CA", 25434},
}};

constexpr std::string_view kTexts =
    // ar-SA
    "dddd، d mmmm yyyy\nh:mm:ss AM/PM\n"
    "ص\nم\n"
    "الأحد\nالاثنين\nالثلاثاء\nالأربعاء\nالخميس\nالجمعة\nالسبت\n"
    "الأحد\nالاثنين\nالثلاثاء\nالأربعاء\nالخميس\nالجمعة\nالسبت\n"
    "يناير\nفبراير\nمارس\nأبريل\nمايو\nيونيو\nيوليو\nأغسطس\nسبتمبر\nأكتوبر\nنوفمبر\nديسمبر\n"
    "يناير\nفبراير\nمارس\nأبريل\nمايو\nيونيو\nيوليو\nأغسطس\nسبتمبر\nأكتوبر\nنوفمبر\nديسمبر\n"
    "يناير\nفبراير\nمارس\nأبريل\nمايو\nيونيو\nيوليو\nأغسطس\nسبتمبر\nأكتوبر\nنوفمبر\nديسمبر\n"
    // bg-BG
    "dddd, d mmmm yyyy \"г\".\nh:mm:ss \"ч\".\n"
    "пр.об.\nсл.об.\n"
    "неделя\nпонеделник\nвторник\nсряда\nчетвъртък\nпетък\nсъбота\n"
    "нд\nпн\nвт\nср\nчт\nпт\nсб\n"
    "януари\nфевруари\nмарт\nаприл\nмай\nюни\nюли\nавгуст\nсептември\nоктомври\nноември\nдекември\n"
    "яну\nфев\nмар\nапр\nмай\nюни\nюли\nавг\nсеп\nокт\nное\nдек\n"
    "януари\nфевруари\nмарт\nаприл\nмай\nюни\nюли\nавгуст\nсептември\nоктомври\nноември\nдекември\n"
    // ca-ES
    "dddd, d mmmm \"de\" yyyy\nh:mm:ss\n"
    "a. m.\np. m.\n"
    "diumenge\ndilluns\ndimarts\ndimecres\ndijous\ndivendres\ndissabte\n"
    "dg.\ndl.\ndt.\ndc.\ndj.\ndv.\nds.\n"
    "gener\nfebrer\nmarç\nabril\nmaig\njuny\njuliol\nagost\nsetembre\noctubre\nnovembre\ndesembre\n"
    "gen.\nfebr.\nmarç\nabr.\nmaig\njuny\njul.\nag.\nset.\noct.\nnov.\ndes.\n"
    "gener\nfebrer\nmarç\nabril\nmaig\njuny\njuliol\nagost\nsetembre\noctubre\nnovembre\ndesembre\n"
    // zh-TW
    "yyyy年m月d日 dddd\nAM/PMh:mm:ss\n"
    "上午\n下午\n"
    "星期日\n星期一\n星期二\n星期三\n星期四\n星期五\n星期六\n"
    "週日\n週一\n週二\n週三\n週四\n週五\n週六\n"
    "一月\n二月\n三月\n四月\n五月\n六月\n七月\n八月\n九月\n十月\n十一月\n十二月\n"
    "一月\n二月\n三月\n四月\n五月\n六月\n七月\n八月\n九月\n十月\n十一月\n十二月\n"
    "一月\n二月\n三月\n四月\n五月\n六月\n七月\n八月\n九月\n十月\n十一月\n十二月\n"
    // cs-CZ
    "dddd d. mmmm yyyy\nh:mm:ss\n"
    "dop.\nodp.\n"
    "neděle\npondělí\núterý\nstředa\nčtvrtek\npátek\nsobota\n"
    "ne\npo\nút\nst\nčt\npá\nso\n"
    "leden\núnor\nbřezen\nduben\nkvěten\nčerven\nčervenec\nsrpen\nzáří\nříjen\nlistopad\nprosinec\n"
    "I\nII\nIII\nIV\nV\nVI\nVII\nVIII\nIX\nX\nXI\nXII\n"
    "ledna\núnora\nbřezna\ndubna\nkvětna\nčervna\nčervence\nsrpna\nzáří\nříjna\nlistopadu\nprosince\n"
    // da-DK
    "dddd \"den\" d. mmmm yyyy\nhh.mm.ss\n"
    "AM\nPM\n"
    "søndag\nmandag\ntirsdag\nonsdag\ntorsdag\nfredag\nlørdag\n"
    "sø\nma\nti\non\nto\nfr\nlø\n"
    "januar\nfebruar\nmarts\napril\nmaj\njuni\njuli\naugust\nseptember\noktober\nnovember\ndecember\n"
    "jan\nfeb\nmar\napr\nmaj\njun\njul\naug\nsep\nokt\nnov\ndec\n"
    "januar\nfebruar\nmarts\napril\nmaj\njuni\njuli\naugust\nseptember\noktober\nnovember\ndecember\n"
    // de-DE
    "dddd, d. mmmm yyyy\nhh:mm:ss\n"
    "AM\nPM\n"
    "Sonntag\nMontag\nDienstag\nMittwoch\nDonnerstag\nFreitag\nSamstag\n"
    "So\nMo\nDi\nMi\nDo\nFr\nSa\n"
    "Januar\nFebruar\nMärz\nApril\nMai\nJuni\nJuli\nAugust\nSeptember\nOktober\nNovember\nDezember\n"
    "Jan\nFeb\nMrz\nApr\nMai\nJun\nJul\nAug\nSep\nOkt\nNov\nDez\n"
    "Januar\nFebruar\nMärz\nApril\nMai\nJuni\nJuli\nAugust\nSeptember\nOktober\nNovember\nDezember\n"
    // el-GR
    "dddd d mmmm yyyy\nh:mm:ss AM/PM\n"
    "π.μ.\nμ.μ.\n"
    "Κυριακή\nΔευτέρα\nΤρίτη\nΤετάρτη\nΠέμπτη\nΠαρασκευή\nΣάββατο\n"
    "Κυρ\nΔευ\nΤρι\nΤετ\nΠεμ\nΠαρ\nΣαβ\n"
    "Ιανουαρίου\nΦεβρουαρίου\nΜαρτίου\nΑπριλίου\nΜαΐου\nΙουνίου\nΙουλίου\nΑυγούστου\nΣεπτεμβρίου\nΟκτωβρίου\nΝοεμβρίου\nΔεκεμβρίου\n"
    "Ιαν\nΦεβ\nΜαρ\nΑπρ\nΜαϊ\nΙουν\nΙουλ\nΑυγ\nΣεπ\nΟκτ\nΝοε\nΔεκ\n"
    "Ιανουαρίου\nΦεβρουαρίου\nΜαρτίου\nΑπριλίου\nΜαΐου\nΙουνίου\nΙουλίου\nΑυγούστου\nΣεπτεμβρίου\nΟκτωβρίου\nΝοεμβρίου\nΔεκεμβρίου\n"
    // en-US
    "dddd, mmmm d, yyyy\nh:mm:ss AM/PM\n"
    "AM\nPM\n"
    "Sunday\nMonday\nTuesday\nWednesday\nThursday\nFriday\nSaturday\n"
    "Sun\nMon\nTue\nWed\nThu\nFri\nSat\n"
    "January\nFebruary\nMarch\nApril\nMay\nJune\nJuly\nAugust\nSeptember\nOctober\nNovember\nDecember\n"
    "Jan\nFeb\nMar\nApr\nMay\nJun\nJul\nAug\nSep\nOct\nNov\nDec\n"
    "January\nFebruary\nMarch\nApril\nMay\nJune\nJuly\nAugust\nSeptember\nOctober\nNovember\nDecember\n"
    // es-ES
    "dddd, d \"de\" mmmm \"de\" yyyy\nh:mm:ss\n"
    "AM\nPM\n"
    "domingo\nlunes\nmartes\nmiércoles\njueves\nviernes\nsábado\n"
    "dom\nlun\nmar\nmié\njue\nvie\nsáb\n"
    "enero\nfebrero\nmarzo\nabril\nmayo\njunio\njulio\nagosto\nseptiembre\noctubre\nnoviembre\ndiciembre\n"
    "ene\nfeb\nmar\nabr\nmay\njun\njul\nago\nsep\noct\nnov\ndic\n"
    "enero\nfebrero\nmarzo\nabril\nmayo\njunio\njulio\nagosto\nseptiembre\noctubre\nnoviembre\ndiciembre\n"
    // fi-FI
    "dddd d. mmmm yyyy\nh.mm.ss\n"
    "ap.\nip.\n"
    "sunnuntai\nmaanantai\ntiistai\nkeskiviikko\ntorstai\nperjantai\nlauantai\n"
    "su\nma\nti\nke\nto\npe\nla\n"
    "tammikuu\nhelmikuu\nmaaliskuu\nhuhtikuu\ntoukokuu\nkesäkuu\nheinäkuu\nelokuu\nsyyskuu\nlokakuu\nmarraskuu\njoulukuu\n"
    "tammi\nhelmi\nmaalis\nhuhti\ntouko\nkesä\nheinä\nelo\nsyys\nloka\nmarras\njoulu\n"
    "tammikuuta\nhelmikuuta\nmaaliskuuta\nhuhtikuuta\ntoukokuuta\nkesäkuuta\nheinäkuuta\nelokuuta\nsyyskuuta\nlokakuuta\nmarraskuuta\njoulukuuta\n"
    // fr-FR
    "dddd d mmmm yyyy\nhh:mm:ss\n"
    "AM\nPM\n"
    "dimanche\nlundi\nmardi\nmercredi\njeudi\nvendredi\nsamedi\n"
    "dim.\nlun.\nmar.\nmer.\njeu.\nven.\nsam.\n"
    "janvier\nfévrier\nmars\navril\nmai\njuin\njuillet\naoût\nseptembre\noctobre\nnovembre\ndécembre\n"
    "janv.\nfévr.\nmars\navr.\nmai\njuin\njuil.\naoût\nsept.\noct.\nnov.\ndéc.\n"
    "janvier\nfévrier\nmars\navril\nmai\njuin\njuillet\naoût\nseptembre\noctobre\nnovembre\ndécembre\n"
    // he-IL
    "dddd, d בmmmm yyyy\nh:mm:ss\n"
    "לפנה״צ\nאחה״צ\n"
    "יום ראשון\nיום שני\nיום שלישי\nיום רביעי\nיום חמישי\nיום שישי\nשבת\n"
    "יום א\nיום ב\nיום ג\nיום ד\nיום ה\nיום ו\nשבת\n"
    "ינואר\nפברואר\nמרץ\nאפריל\nמאי\nיוני\nיולי\nאוגוסט\nספטמבר\nאוקטובר\nנובמבר\nדצמבר\n"
    "ינו\nפבר\nמרץ\nאפר\nמאי\nיוני\nיולי\nאוג\nספט\nאוק\nנוב\nדצמ\n"
    "ינואר\nפברואר\nמרץ\nאפריל\nמאי\nיוני\nיולי\nאוגוסט\nספטמבר\nאוקטובר\nנובמבר\nדצמבר\n"
    // hu-HU
    "yyyy. mmmm d., dddd\nh:mm:ss\n"
    "de.\ndu.\n"
    "vasárnap\nhétfő\nkedd\nszerda\ncsütörtök\npéntek\nszombat\n"
    "V\nH\nK\nSze\nCs\nP\nSzo\n"
    "január\nfebruár\nmárcius\náprilis\nmájus\njúnius\njúlius\naugusztus\nszeptember\noktóber\nnovember\ndecember\n"
    "jan\nfebr\nmárc\nápr\nmáj\njún\njúl\naug\nszept\nokt\nnov\ndec\n"
    "január\nfebruár\nmárcius\náprilis\nmájus\njúnius\njúlius\naugusztus\nszeptember\noktóber\nnovember\ndecember\n"
    // is-IS
    "dddd, d. mmmm yyyy\nhh:mm:ss\n"
    "f.h.\ne.h.\n"
    "sunnudagur\nmánudagur\nþriðjudagur\nmiðvikudagur\nfimmtudagur\nföstudagur\nlaugardagur\n"
    "sun\nmán\nþri\nmið\nfim\nfös\nlau\n"
    "janúar\nfebrúar\nmars\napríl\nmaí\njúní\njúlí\nágúst\nseptember\noktóber\nnóvember\ndesember\n"
    "jan\nfeb\nmar\napr\nmaí\njún\njúl\nágú\nsep\nokt\nnóv\ndes\n"
    "janúar\nfebrúar\nmars\napríl\nmaí\njúní\njúlí\nágúst\nseptember\noktóber\nnóvember\ndesember\n"
    // it-IT
    "dddd d mmmm yyyy\nhh:mm:ss\n"
    "AM\nPM\n"
    "domenica\nlunedì\nmartedì\nmercoledì\ngiovedì\nvenerdì\nsabato\n"
    "dom\nlun\nmar\nmer\ngio\nven\nsab\n"
    "gennaio\nfebbraio\nmarzo\naprile\nmaggio\ngiugno\nluglio\nagosto\nsettembre\nottobre\nnovembre\ndicembre\n"
    "gen\nfeb\nmar\napr\nmag\ngiu\nlug\nago\nset\nott\nnov\ndic\n"
    "gennaio\nfebbraio\nmarzo\naprile\nmaggio\ngiugno\nluglio\nagosto\nsettembre\nottobre\nnovembre\ndicembre\n"
    // ja-JP
    "yyyy年m月d日dddd\nh:mm:ss\n"
    "午前\n午後\n"
    "日曜日\n月曜日\n火曜日\n水曜日\n木曜日\n金曜日\n土曜日\n"
    "日\n月\n火\n水\n木\n金\n土\n"
    "1月\n2月\n3月\n4月\n5月\n6月\n7月\n8月\n9月\n10月\n11月\n12月\n"
    "1月\n2月\n3月\n4月\n5月\n6月\n7月\n8月\n9月\n10月\n11月\n12月\n"
    "1月\n2月\n3月\n4月\n5月\n6月\n7月\n8月\n9月\n10月\n11月\n12月\n"
    // ko-KR
    "yyyy년 m월 d일 dddd\nAM/PM h:mm:ss\n"
    "오전\n오후\n"
    "일요일\n월요일\n화요일\n수요일\n목요일\n금요일\n토요일\n"
    "일\n월\n화\n수\n목\n금\n토\n"
    "1월\n2월\n3월\n4월\n5월\n6월\n7월\n8월\n9월\n10월\n11월\n12월\n"
    "1월\n2월\n3월\n4월\n5월\n6월\n7월\n8월\n9월\n10월\n11월\n12월\n"
    "1월\n2월\n3월\n4월\n5월\n6월\n7월\n8월\n9월\n10월\n11월\n12월\n"
    // nl-NL
    "dddd d mmmm yyyy\nhh:mm:ss\n"
    "AM\nPM\n"
    "zondag\nmaandag\ndinsdag\nwoensdag\ndonderdag\nvrijdag\nzaterdag\n"
    "zo\nma\ndi\nwo\ndo\nvr\nza\n"
    "januari\nfebruari\nmaart\napril\nmei\njuni\njuli\naugustus\nseptember\noktober\nnovember\ndecember\n"
    "jan\nfeb\nmrt\napr\nmei\njun\njul\naug\nsep\nokt\nnov\ndec\n"
    "januari\nfebruari\nmaart\napril\nmei\njuni\njuli\naugustus\nseptember\noktober\nnovember\ndecember\n"
    // nb-NO
    "dddd d. mmmm yyyy\nhh:mm:ss\n"
    "a.m.\np.m.\n"
    "søndag\nmandag\ntirsdag\nonsdag\ntorsdag\nfredag\nlørdag\n"
    "søn\nman\ntir\nons\ntor\nfre\nlør\n"
    "januar\nfebruar\nmars\napril\nmai\njuni\njuli\naugust\nseptember\noktober\nnovember\ndesember\n"
    "jan\nfeb\nmar\napr\nmai\njun\njul\naug\nsep\nokt\nnov\ndes\n"
    "januar\nfebruar\nmars\napril\nmai\njuni\njuli\naugust\nseptember\noktober\nnovember\ndesember\n"
    // pl-PL
    "dddd, d mmmm yyyy\nhh:mm:ss\n"
    "AM\nPM\n"
    "niedziela\nponiedziałek\nwtorek\nśroda\nczwartek\npiątek\nsobota\n"
    "niedz\npon\nwt\nśr\nczw\npt\nsob\n"
    "styczeń\nluty\nmarzec\nkwiecień\nmaj\nczerwiec\nlipiec\nsierpień\nwrzesień\npaździernik\nlistopad\ngrudzień\n"
    "sty\nlut\nmar\nkwi\nmaj\ncze\nlip\nsie\nwrz\npaź\nlis\ngru\n"
    "stycznia\nlutego\nmarca\nkwietnia\nmaja\nczerwca\nlipca\nsierpnia\nwrześnia\npaździernika\nlistopada\ngrudnia\n"
    // pt-BR
    "dddd, d \"de\" mmmm \"de\" yyyy\nhh:mm:ss\n"
    "AM\nPM\n"
    "domingo\nsegunda-feira\nterça-feira\nquarta-feira\nquinta-feira\nsexta-feira\nsábado\n"
    "dom\nseg\nter\nqua\nqui\nsex\nsáb\n"
    "janeiro\nfevereiro\nmarço\nabril\nmaio\njunho\njulho\nagosto\nsetembro\noutubro\nnovembro\ndezembro\n"
    "jan\nfev\nmar\nabr\nmai\njun\njul\nago\nset\nout\nnov\ndez\n"
    "janeiro\nfevereiro\nmarço\nabril\nmaio\njunho\njulho\nagosto\nsetembro\noutubro\nnovembro\ndezembro\n"
    // ro-RO
    "dddd, d mmmm yyyy\nhh:mm:ss\n"
    "a.m.\np.m.\n"
    "duminică\nluni\nmarți\nmiercuri\njoi\nvineri\nsâmbătă\n"
    "dum\nlun\nmar\nmie\njoi\nvin\nsâm\n"
    "ianuarie\nfebruarie\nmartie\naprilie\nmai\niunie\niulie\naugust\nseptembrie\noctombrie\nnoiembrie\ndecembrie\n"
    "ian\nfeb\nmar\napr\nmai\niun\niul\naug\nsept\noct\nnov\ndec\n"
    "ianuarie\nfebruarie\nmartie\naprilie\nmai\niunie\niulie\naugust\nseptembrie\noctombrie\nnoiembrie\ndecembrie\n"
    // ru-RU
    "dddd, d mmmm yyyy \"г\".\nhh:mm:ss\n"
    "AM\nPM\n"
    "воскресенье\nпонедельник\nвторник\nсреда\nчетверг\nпятница\nсуббота\n"
    "Вс\nПн\nВт\nСр\nЧт\nПт\nСб\n"
    "Январь\nФевраль\nМарт\nАпрель\nМай\nИюнь\nИюль\nАвгуст\nСентябрь\nОктябрь\nНоябрь\nДекабрь\n"
    "янв\nфев\nмар\nапр\nмай\nиюн\nиюл\nавг\nсен\nокт\nноя\nдек\n"
    "января\nфевраля\nмарта\nапреля\nмая\nиюня\nиюля\nавгуста\nсентября\nоктября\nноября\nдекабря\n"
    // hr-HR
    "dddd, d. mmmm yyyy.\nhh:mm:ss\n"
    "AM\nPM\n"
    "nedjelja\nponedjeljak\nutorak\nsrijeda\nčetvrtak\npetak\nsubota\n"
    "ned\npon\nuto\nsri\nčet\npet\nsub\n"
    "siječanj\nveljača\nožujak\ntravanj\nsvibanj\nlipanj\nsrpanj\nkolovoz\nrujan\nlistopad\nstudeni\nprosinac\n"
    "sij\nvelj\nožu\ntra\nsvi\nlip\nsrp\nkol\nruj\nlis\nstu\npro\n"
    "siječnja\nveljače\nožujka\ntravnja\nsvibnja\nlipnja\nsrpnja\nkolovoza\nrujna\nlistopada\nstudenoga\nprosinca\n"
    // sk-SK
    "dddd d. mmmm yyyy\nh:mm:ss\n"
    "AM\nPM\n"
    "nedeľa\npondelok\nutorok\nstreda\nštvrtok\npiatok\nsobota\n"
    "ne\npo\nut\nst\nšt\npi\nso\n"
    "január\nfebruár\nmarec\napríl\nmáj\njún\njúl\naugust\nseptember\noktóber\nnovember\ndecember\n"
    "jan\nfeb\nmar\napr\nmáj\njún\njúl\naug\nsep\nokt\nnov\ndec\n"
    "januára\nfebruára\nmarca\napríla\nmája\njúna\njúla\naugusta\nseptembra\noktóbra\nnovembra\ndecembra\n"
    // sq-AL
    "dddd, d mmmm yyyy\nh:mm:ss AM/PM\n"
    "AM\nPM\n"
    "e diel\ne hënë\ne martë\ne mërkurë\ne enjte\ne premte\ne shtunë\n"
    "Die\nHën\nMar\nMër\nEnj\nPre\nSht\n"
    "janar\nshkurt\nmars\nprill\nmaj\nqershor\nkorrik\ngusht\nshtator\ntetor\nnëntor\ndhjetor\n"
    "jan\nshk\nmar\npri\nmaj\nqer\nkorr\ngush\nsht\ntet\nnën\ndhj\n"
    "janar\nshkurt\nmars\nprill\nmaj\nqershor\nkorrik\ngusht\nshtator\ntetor\nnëntor\ndhjetor\n"
    // sv-SE
    "dddd d mmmm yyyy\nhh:mm:ss\n"
    "fm\nem\n"
    "söndag\nmåndag\ntisdag\nonsdag\ntorsdag\nfredag\nlördag\n"
    "sön\nmån\ntis\nons\ntors\nfre\nlör\n"
    "januari\nfebruari\nmars\napril\nmaj\njuni\njuli\naugusti\nseptember\noktober\nnovember\ndecember\n"
    "jan\nfeb\nmar\napr\nmaj\njun\njul\naug\nsep\nokt\nnov\ndec\n"
    "januari\nfebruari\nmars\napril\nmaj\njuni\njuli\naugusti\nseptember\noktober\nnovember\ndecember\n"
    // th-TH
    "ddddที่ d mmmm  yyyy\nhh:mm:ss\n"
    "AM\nPM\n"
    "อาทิตย์\nจันทร์\nอังคาร\nพุธ\nพฤหัสบดี\nศุกร์\nเสาร์\n"
    "อา.\nจ.\nอ.\nพ.\nพฤ.\nศ.\nส.\n"
    "มกราคม\nกุมภาพันธ์\nมีนาคม\nเมษายน\nพฤษภาคม\nมิถุนายน\nกรกฎาคม\nสิงหาคม\nกันยายน\nตุลาคม\nพฤศจิกายน\nธันวาคม\n"
    "ม.ค.\nก.พ.\nมี.ค.\nเม.ย.\nพ.ค.\nมิ.ย.\nก.ค.\nส.ค.\nก.ย.\nต.ค.\nพ.ย.\nธ.ค.\n"
    "มกราคม\nกุมภาพันธ์\nมีนาคม\nเมษายน\nพฤษภาคม\nมิถุนายน\nกรกฎาคม\nสิงหาคม\nกันยายน\nตุลาคม\nพฤศจิกายน\nธันวาคม\n"
    // tr-TR
    "d mmmm yyyy dddd\nhh:mm:ss\n"
    "ÖÖ\nÖS\n"
    "Pazar\nPazartesi\nSalı\nÇarşamba\nPerşembe\nCuma\nCumartesi\n"
    "Paz\nPzt\nSal\nÇar\nPer\nCum\nCmt\n"
    "Ocak\nŞubat\nMart\nNisan\nMayıs\nHaziran\nTemmuz\nAğustos\nEylül\nEkim\nKasım\nAralık\n"
    "Oca\nŞub\nMar\nNis\nMay\nHaz\nTem\nAğu\nEyl\nEki\nKas\nAra\n"
    "Ocak\nŞubat\nMart\nNisan\nMayıs\nHaziran\nTemmuz\nAğustos\nEylül\nEkim\nKasım\nAralık\n"
    // id-ID
    "dddd, dd mmmm yyyy\nhh.mm.ss\n"
    "AM\nPM\n"
    "Minggu\nSenin\nSelasa\nRabu\nKamis\nJumat\nSabtu\n"
    "Min\nSen\nSel\nRab\nKam\nJum\nSab\n"
    "Januari\nFebruari\nMaret\nApril\nMei\nJuni\nJuli\nAgustus\nSeptember\nOktober\nNovember\nDesember\n"
    "Jan\nFeb\nMar\nApr\nMei\nJun\nJul\nAgu\nSep\nOkt\nNov\nDes\n"
    "Januari\nFebruari\nMaret\nApril\nMei\nJuni\nJuli\nAgustus\nSeptember\nOktober\nNovember\nDesember\n"
    // uk-UA
    "dddd, d mmmm yyyy \"р\".\nhh:mm:ss\n"
    "дп\nпп\n"
    "неділя\nпонеділок\nвівторок\nсереда\nчетвер\nп'ятниця\nсубота\n"
    "Нд\nПн\nВт\nСр\nЧт\nПт\nСб\n"
    "січень\nлютий\nберезень\nквітень\nтравень\nчервень\nлипень\nсерпень\nвересень\nжовтень\nлистопад\nгрудень\n"
    "січ\nлют\nбер\nкві\nтра\nчер\nлип\nсер\nвер\nжов\nлис\nгру\n"
    "січня\nлютого\nберезня\nквітня\nтравня\nчервня\nлипня\nсерпня\nвересня\nжовтня\nлистопада\nгрудня\n"
    // be-BY
    "dddd, d mmmm yyyy \"г\".\nhh:mm:ss\n"
    "AM\nPM\n"
    "нядзеля\nпанядзелак\nаўторак\nсерада\nчацвер\nпятніца\nсубота\n"
    "нд\nпн\nаў\nср\nчц\nпт\nсб\n"
    "студзень\nлюты\nсакавік\nкрасавік\nмай\nчэрвень\nліпень\nжнівень\nверасень\nкастрычнік\nлістапад\nснежань\n"
    "сту\nлют\nсак\nкра\nмай\nчэр\nліп\nжні\nвер\nкас\nліс\nсне\n"
    "студзеня\nлютага\nсакавіка\nкрасавіка\nмая\nчэрвеня\nліпеня\nжніўня\nверасня\nкастрычніка\nлістапада\nснежня\n"
    // sl-SI
    "dddd, d. mmmm yyyy\nhh:mm:ss\n"
    "dop.\npop.\n"
    "nedelja\nponedeljek\ntorek\nsreda\nčetrtek\npetek\nsobota\n"
    "ned\npon\ntor\nsre\nčet\npet\nsob\n"
    "januar\nfebruar\nmarec\napril\nmaj\njunij\njulij\navgust\nseptember\noktober\nnovember\ndecember\n"
    "jan\nfeb\nmar\napr\nmaj\njun\njul\navg\nsep\nokt\nnov\ndec\n"
    "januar\nfebruar\nmarec\napril\nmaj\njunij\njulij\navgust\nseptember\noktober\nnovember\ndecember\n"
    // et-EE
    "dddd, d. mmmm yyyy\nhh:mm:ss\n"
    "AM\nPM\n"
    "pühapäev\nesmaspäev\nteisipäev\nkolmapäev\nneljapäev\nreede\nlaupäev\n"
    "P\nE\nT\nK\nN\nR\nL\n"
    "jaanuar\nveebruar\nmärts\naprill\nmai\njuuni\njuuli\naugust\nseptember\noktoober\nnovember\ndetsember\n"
    "jaan\nveebr\nmärts\napr\nmai\njuuni\njuuli\naug\nsept\nokt\nnov\ndets\n"
    "jaanuar\nveebruar\nmärts\naprill\nmai\njuuni\njuuli\naugust\nseptember\noktoober\nnovember\ndetsember\n"
    // lv-LV
    "dddd, yyyy. \"gada\" d. mmmm\nhh:mm:ss\n"
    "priekšpusdienā\npēcpusdienā\n"
    "svētdiena\npirmdiena\notrdiena\ntrešdiena\nceturtdiena\npiektdiena\nsestdiena\n"
    "svētd\npirmd\notrd\ntrešd\nceturtd\npiektd\nsestd\n"
    "janvāris\nfebruāris\nmarts\naprīlis\nmaijs\njūnijs\njūlijs\naugusts\nseptembris\noktobris\nnovembris\ndecembris\n"
    "janv\nfebr\nmarts\napr\nmaijs\njūn\njūl\naug\nsept\nokt\nnov\ndec\n"
    "janvāris\nfebruāris\nmarts\naprīlis\nmaijs\njūnijs\njūlijs\naugusts\nseptembris\noktobris\nnovembris\ndecembris\n"
    // lt-LT
    "yyyy \"m\". mmmm d \"d\"., dddd\nhh:mm:ss\n"
    "priešpiet\npopiet\n"
    "sekmadienis\npirmadienis\nantradienis\ntrečiadienis\nketvirtadienis\npenktadienis\nšeštadienis\n"
    "sk\npr\nan\ntr\nkt\npn\nšt\n"
    "sausis\nvasaris\nkovas\nbalandis\ngegužė\nbirželis\nliepa\nrugpjūtis\nrugsėjis\nspalis\nlapkritis\ngruodis\n"
    "saus\nvas\nkov\nbal\ngeg\nbirž\nliep\nrugp\nrugs\nspal\nlapkr\ngruod\n"
    "sausio\nvasario\nkovo\nbalandžio\ngegužės\nbirželio\nliepos\nrugpjūčio\nrugsėjo\nspalio\nlapkričio\ngruodžio\n"
    // fa-IR
    "dddd d mmmm yyyy\nh:mm:ss\n"
    "قبل‌ازظهر\nبعدازظهر\n"
    "یکشنبه\nدوشنبه\nسه‌شنبه\nچهارشنبه\nپنجشنبه\nجمعه\nشنبه\n"
    "یکشنبه\nدوشنبه\nسه‌شنبه\nچهارشنبه\nپنجشنبه\nجمعه\nشنبه\n"
    "ژانویه\nفوریه\nمارس\nآوریل\nمه\nژوئن\nژوئیه\nاوت\nسپتامبر\nاکتبر\nنوامبر\nدسامبر\n"
    "ژانویه\nفوریه\nمارس\nآوریل\nمه\nژوئن\nژوئیه\nاوت\nسپتامبر\nاکتبر\nنوامبر\nدسامبر\n"
    "ژانویهٔ\nفوریهٔ\nمارس\nآوریل\nمهٔ\nژوئن\nژوئیهٔ\nاوت\nسپتامبر\nاکتبر\nنوامبر\nدسامبر\n"
    // vi-VN
    "dddd, d mmmm, yyyy\nhh:mm:ss\n"
    "SA\nCH\n"
    "Chủ Nhật\nThứ Hai\nThứ Ba\nThứ Tư\nThứ Năm\nThứ Sáu\nThứ Bảy\n"
    "CN\nTh 2\nTh 3\nTh 4\nTh 5\nTh 6\nTh 7\n"
    "Tháng 1\nTháng 2\nTháng 3\nTháng 4\nTháng 5\nTháng 6\nTháng 7\nTháng 8\nTháng 9\nTháng 10\nTháng 11\nTháng 12\n"
    "Thg 1\nThg 2\nThg 3\nThg 4\nThg 5\nThg 6\nThg 7\nThg 8\nThg 9\nThg 10\nThg 11\nThg 12\n"
    "tháng 1\ntháng 2\ntháng 3\ntháng 4\ntháng 5\ntháng 6\ntháng 7\ntháng 8\ntháng 9\ntháng 10\ntháng 11\ntháng 12\n"
    // eu-ES
    "yyyy(\"e\")\"ko\" mmmm\"ren\" d(\"a\"), dddd\nhh:mm:ss\n"
    "AM\nPM\n"
    "igandea\nastelehena\nasteartea\nasteazkena\nosteguna\nostirala\nlarunbata\n"
    "ig\nal\nar\naz\nog\nor\nlr\n"
    "urtarrila\notsaila\nmartxoa\napirila\nmaiatza\nekaina\nuztaila\nabuztua\niraila\nurria\nazaroa\nabendua\n"
    "urt\nots\nmar\napi\nmai\neka\nuzt\nabu\nira\nurr\naza\nabe\n"
    "urtarrila\notsaila\nmartxoa\napirila\nmaiatza\nekaina\nuztaila\nabuztua\niraila\nurria\nazaroa\nabendua\n"
    // mk-MK
    "dddd, d mmmm yyyy\nhh:mm:ss\n"
    "AM\nPM\n"
    "недела\nпонеделник\nвторник\nсреда\nчетврток\nпеток\nсабота\n"
    "нед\nпон\nвто\nсре\nчет\nпет\nсаб\n"
    "јануари\nфевруари\nмарт\nаприл\nмај\nјуни\nјули\nавгуст\nсептември\nоктомври\nноември\nдекември\n"
    "јан\nфев\nмар\nапр\nмај\nјун\nјул\nавг\nсепт\nокт\nноем\nдек\n"
    "јануари\nфевруари\nмарт\nаприл\nмај\nјуни\nјули\nавгуст\nсептември\nоктомври\nноември\nдекември\n"
    // af-ZA
    "dddd dd mmmm yyyy\nhh:mm:ss\n"
    "AM\nPM\n"
    "Sondag\nMaandag\nDinsdag\nWoensdag\nDonderdag\nVrydag\nSaterdag\n"
    "So\nMa\nDi\nWo\nDo\nVr\nSa\n"
    "Januarie\nFebruarie\nMaart\nApril\nMei\nJunie\nJulie\nAugustus\nSeptember\nOktober\nNovember\nDesember\n"
    "Jan\nFeb\nMrt\nApr\nMei\nJun\nJul\nAug\nSep\nOkt\nNov\nDes\n"
    "Januarie\nFebruarie\nMaart\nApril\nMei\nJunie\nJulie\nAugustus\nSeptember\nOktober\nNovember\nDesember\n"
    // ka-GE
    "dddd, dd mmmm, yyyy\nhh:mm:ss\n"
    "AM\nPM\n"
    "კვირა\nორშაბათი\nსამშაბათი\nოთხშაბათი\nხუთშაბათი\nპარასკევი\nშაბათი\n"
    "კვი\nორშ\nსამ\nოთხ\nხუთ\nპარ\nშაბ\n"
    "იანვარი\nთებერვალი\nმარტი\nაპრილი\nმაისი\nივნისი\nივლისი\nაგვისტო\nსექტემბერი\nოქტომბერი\nნოემბერი\nდეკემბერი\n"
    "იან\nთებ\nმარ\nაპრ\nმაი\nივნ\nივლ\nაგვ\nსექ\nოქტ\nნოე\nდეკ\n"
    "იანვარი\nთებერვალი\nმარტი\nაპრილი\nმაისი\nივნისი\nივლისი\nაგვისტო\nსექტემბერი\nოქტომბერი\nნოემბერი\nდეკემბერი\n"
    // hi-IN
    "dddd, d mmmm yyyy\nh:mm:ss AM/PM\n"
    "am\npm\n"
    "रविवार\nसोमवार\nमंगलवार\nबुधवार\nगुरुवार\nशुक्रवार\nशनिवार\n"
    "रवि.\nसोम.\nमंगल.\nबुध.\nगुरु.\nशुक्र.\nशनि.\n"
    "जनवरी\nफ़रवरी\nमार्च\nअप्रैल\nमई\nजून\nजुलाई\nअगस्त\nसितंबर\nअक्तूबर\nनवंबर\nदिसंबर\n"
    "जन॰\nफ़र॰\nमार्च\nअप्रैल\nमई\nजून\nजुल॰\nअग॰\nसित॰\nअक्तू॰\nनव॰\nदिस॰\n"
    "जनवरी\nफ़रवरी\nमार्च\nअप्रैल\nमई\nजून\nजुलाई\nअगस्त\nसितंबर\nअक्तूबर\nनवंबर\nदिसंबर\n"
    // ms-MY
    "dddd, d mmmm yyyy\nh:mm:ss AM/PM\n"
    "AM\nPM\n"
    "Ahad\nIsnin\nSelasa\nRabu\nKhamis\nJumaat\nSabtu\n"
    "Ahd\nIsn\nSel\nRab\nKha\nJum\nSab\n"
    "Januari\nFebruari\nMac\nApril\nMei\nJun\nJulai\nOgos\nSeptember\nOktober\nNovember\nDisember\n"
    "Jan\nFeb\nMac\nApr\nMei\nJun\nJul\nOgo\nSep\nOkt\nNov\nDis\n"
    "Januari\nFebruari\nMac\nApril\nMei\nJun\nJulai\nOgos\nSeptember\nOktober\nNovember\nDisember\n"
    // gl-ES
    "dddd, d \"de\" mmmm \"de\" yyyy\nhh:mm:ss\n"
    "a.m.\np.m.\n"
    "domingo\nluns\nmartes\nmércores\nxoves\nvenres\nsábado\n"
    "dom\nluns\nmar\nmér\nxov\nven\nsáb\n"
    "Xaneiro\nFebreiro\nMarzo\nAbril\nMaio\nXuño\nXullo\nAgosto\nSetembro\nOutubro\nNovembro\nDecembro\n"
    "Xan\nFeb\nMar\nAbr\nMaio\nXuño\nXul\nAgo\nSet\nOut\nNov\nDec\n"
    "xaneiro\nfebreiro\nmarzo\nabril\nmaio\nxuño\nxullo\nagosto\nsetembro\noutubro\nnovembro\ndecembro\n"
    // zh-CN
    "yyyy年m月d日dddd\nhh:mm:ss\n"
    "上午\n下午\n"
    "星期日\n星期一\n星期二\n星期三\n星期四\n星期五\n星期六\n"
    "周日\n周一\n周二\n周三\n周四\n周五\n周六\n"
    "一月\n二月\n三月\n四月\n五月\n六月\n七月\n八月\n九月\n十月\n十一月\n十二月\n"
    "1月\n2月\n3月\n4月\n5月\n6月\n7月\n8月\n9月\n10月\n11月\n12月\n"
    "一月\n二月\n三月\n四月\n五月\n六月\n七月\n八月\n九月\n十月\n十一月\n十二月\n"
    // de-CH
    "dddd, d. mmmm yyyy\nhh:mm:ss\n"
    "AM\nPM\n"
    "Sonntag\nMontag\nDienstag\nMittwoch\nDonnerstag\nFreitag\nSamstag\n"
    "So\nMo\nDi\nMi\nDo\nFr\nSa\n"
    "Januar\nFebruar\nMärz\nApril\nMai\nJuni\nJuli\nAugust\nSeptember\nOktober\nNovember\nDezember\n"
    "Jan\nFeb\nMär\nApr\nMai\nJun\nJul\nAug\nSep\nOkt\nNov\nDez\n"
    "Januar\nFebruar\nMärz\nApril\nMai\nJuni\nJuli\nAugust\nSeptember\nOktober\nNovember\nDezember\n"
    // en-GB
    "dddd, d mmmm yyyy\nhh:mm:ss\n"
    "AM\nPM\n"
    "Sunday\nMonday\nTuesday\nWednesday\nThursday\nFriday\nSaturday\n"
    "Sun\nMon\nTue\nWed\nThu\nFri\nSat\n"
    "January\nFebruary\nMarch\nApril\nMay\nJune\nJuly\nAugust\nSeptember\nOctober\nNovember\nDecember\n"
    "Jan\nFeb\nMar\nApr\nMay\nJun\nJul\nAug\nSep\nOct\nNov\nDec\n"
    "January\nFebruary\nMarch\nApril\nMay\nJune\nJuly\nAugust\nSeptember\nOctober\nNovember\nDecember\n"
    // es-MX
    "dddd, d \"de\" mmmm \"de\" yyyy\nhh:mm:ss\n"
    "AM\nPM\n"
    "domingo\nlunes\nmartes\nmiércoles\njueves\nviernes\nsábado\n"
    "dom\nlun\nmar\nmié\njue\nvie\nsáb\n"
    "enero\nfebrero\nmarzo\nabril\nmayo\njunio\njulio\nagosto\nseptiembre\noctubre\nnoviembre\ndiciembre\n"
    "ene\nfeb\nmar\nabr\nmay\njun\njul\nago\nsep\noct\nnov\ndic\n"
    "enero\nfebrero\nmarzo\nabril\nmayo\njunio\njulio\nagosto\nseptiembre\noctubre\nnoviembre\ndiciembre\n"
    // nn-NO
    "dddd d. mmmm yyyy\nhh:mm:ss\n"
    "a.m.\np.m.\n"
    "søndag\nmåndag\ntysdag\nonsdag\ntorsdag\nfredag\nlaurdag\n"
    "sø\nmå\nty\non\nto\nfr\nla\n"
    "januar\nfebruar\nmars\napril\nmai\njuni\njuli\naugust\nseptember\noktober\nnovember\ndesember\n"
    "jan\nfeb\nmar\napr\nmai\njun\njul\naug\nsep\nokt\nnov\ndes\n"
    "januar\nfebruar\nmars\napril\nmai\njuni\njuli\naugust\nseptember\noktober\nnovember\ndesember\n"
    // pt-PT
    "dddd, d \"de\" mmmm \"de\" yyyy\nhh:mm:ss\n"
    "AM\nPM\n"
    "domingo\nsegunda-feira\nterça-feira\nquarta-feira\nquinta-feira\nsexta-feira\nsábado\n"
    "dom\nseg\nter\nqua\nqui\nsex\nsáb\n"
    "janeiro\nfevereiro\nmarço\nabril\nmaio\njunho\njulho\nagosto\nsetembro\noutubro\nnovembro\ndezembro\n"
    "jan\nfev\nmar\nabr\nmai\njun\njul\nago\nset\nout\nnov\ndez\n"
    "janeiro\nfevereiro\nmarço\nabril\nmaio\njunho\njulho\nagosto\nsetembro\noutubro\nnovembro\ndezembro\n"
    // sr-Latn-CS
    "dddd, d. mmmm yyyy.\nhh:mm:ss\n"
    "AM\nPM\n"
    "nedelja\nponedeljak\nutorak\nsreda\nčetvrtak\npetak\nsubota\n"
    "ned\npon\nuto\nsre\nčet\npet\nsub\n"
    "januar\nfebruar\nmart\napril\nmaj\njun\njul\navgust\nseptembar\noktobar\nnovembar\ndecembar\n"
    "jan\nfeb\nmar\napr\nmaj\njun\njul\navg\nsep\nokt\nnov\ndec\n"
    "januar\nfebruar\nmart\napril\nmaj\njun\njul\navgust\nseptembar\noktobar\nnovembar\ndecembar\n"
    // zh-HK
    "yyyy年m月d日dddd\nAM/PMh:mm:ss\n"
    "上午\n下午\n"
    "星期日\n星期一\n星期二\n星期三\n星期四\n星期五\n星期六\n"
    "週日\n週一\n週二\n週三\n週四\n週五\n週六\n"
    "一月\n二月\n三月\n四月\n五月\n六月\n七月\n八月\n九月\n十月\n十一月\n十二月\n"
    "一月\n二月\n三月\n四月\n五月\n六月\n七月\n八月\n九月\n十月\n十一月\n十二月\n"
    "一月\n二月\n三月\n四月\n五月\n六月\n七月\n八月\n九月\n十月\n十一月\n十二月\n"
    // de-AT
    "dddd, d. mmmm yyyy\nhh:mm:ss\n"
    "AM\nPM\n"
    "Sonntag\nMontag\nDienstag\nMittwoch\nDonnerstag\nFreitag\nSamstag\n"
    "So\nMo\nDi\nMi\nDo\nFr\nSa\n"
    "Jänner\nFebruar\nMärz\nApril\nMai\nJuni\nJuli\nAugust\nSeptember\nOktober\nNovember\nDezember\n"
    "Jän\nFeb\nMär\nApr\nMai\nJun\nJul\nAug\nSep\nOkt\nNov\nDez\n"
    "Jänner\nFebruar\nMärz\nApril\nMai\nJuni\nJuli\nAugust\nSeptember\nOktober\nNovember\nDezember\n"
    // en-AU
    "dddd, d mmmm yyyy\nh:mm:ss AM/PM\n"
    "AM\nPM\n"
    "Sunday\nMonday\nTuesday\nWednesday\nThursday\nFriday\nSaturday\n"
    "Sun\nMon\nTue\nWed\nThu\nFri\nSat\n"
    "January\nFebruary\nMarch\nApril\nMay\nJune\nJuly\nAugust\nSeptember\nOctober\nNovember\nDecember\n"
    "Jan\nFeb\nMar\nApr\nMay\nJun\nJul\nAug\nSep\nOct\nNov\nDec\n"
    "January\nFebruary\nMarch\nApril\nMay\nJune\nJuly\nAugust\nSeptember\nOctober\nNovember\nDecember\n"
    // es-ES
    "dddd, d \"de\" mmmm \"de\" yyyy\nh:mm:ss\n"
    "AM\nPM\n"
    "domingo\nlunes\nmartes\nmiércoles\njueves\nviernes\nsábado\n"
    "dom\nlun\nmar\nmié\njue\nvie\nsáb\n"
    "enero\nfebrero\nmarzo\nabril\nmayo\njunio\njulio\nagosto\nseptiembre\noctubre\nnoviembre\ndiciembre\n"
    "ene\nfeb\nmar\nabr\nmay\njun\njul\nago\nsep\noct\nnov\ndic\n"
    "enero\nfebrero\nmarzo\nabril\nmayo\njunio\njulio\nagosto\nseptiembre\noctubre\nnoviembre\ndiciembre\n"
    // fr-CA
    "dddd d mmmm yyyy\nhh \"h\" mm \"min\" ss \"s\"\n"
    "AM\nPM\n"
    "dimanche\nlundi\nmardi\nmercredi\njeudi\nvendredi\nsamedi\n"
    "dim.\nlun.\nmar.\nmer.\njeu.\nven.\nsam.\n"
    "janvier\nfévrier\nmars\navril\nmai\njuin\njuillet\naoût\nseptembre\noctobre\nnovembre\ndécembre\n"
    "janv.\nfévr.\nmars\navr.\nmai\njuin\njuill.\naoût\nsept.\noct.\nnov.\ndéc.\n"
    "janvier\nfévrier\nmars\navril\nmai\njuin\njuillet\naoût\nseptembre\noctobre\nnovembre\ndécembre\n"
    // sr-Cyrl-CS
    "dddd, d. mmmm yyyy.\nhh:mm:ss\n"
    "AM\nPM\n"
    "недеља\nпонедељак\nуторак\nсреда\nчетвртак\nпетак\nсубота\n"
    "нед\nпон\nуто\nсре\nчет\nпет\nсуб\n"
    "јануар\nфебруар\nмарт\nаприл\nмај\nјун\nјул\nавгуст\nсептембар\nоктобар\nновембар\nдецембар\n"
    "јан\nфеб\nмар\nапр\nмај\nјун\nјул\nавг\nсеп\nокт\nнов\nдец\n"
    "јануар\nфебруар\nмарт\nаприл\nмај\nјун\nјул\nавгуст\nсептембар\nоктобар\nновембар\nдецембар\n"
    // en-CA
    "dddd, mmmm d, yyyy\nh:mm:ss AM/PM\n"
    "AM\nPM\n"
    "Sunday\nMonday\nTuesday\nWednesday\nThursday\nFriday\nSaturday\n"
    "Sun\nMon\nTue\nWed\nThu\nFri\nSat\n"
    "January\nFebruary\nMarch\nApril\nMay\nJune\nJuly\nAugust\nSeptember\nOctober\nNovember\nDecember\n"
    "Jan\nFeb\nMar\nApr\nMay\nJun\nJul\nAug\nSep\nOct\nNov\nDec\n"
    "January\nFebruary\nMarch\nApril\nMay\nJune\nJuly\nAugust\nSeptember\nOctober\nNovember\nDecember\n";
// clang-format on

} // namespace

std::span<const LocaleEntry> Locales()
{
    return kLocales;
}

std::string_view LocaleTexts()
{
    return kTexts;
}

} // namespace orrery::look
