#include "menus/LanguageList.h"

namespace mw {

const std::array<std::string_view, 136> kLanguageRows = {
    "ab ABKHAZIAN", "om AFAN (OROMO)", "aa AFAR AA", "af AFRIKAANS", "sq ALBANIAN", "am AMHARIC", "ar ARABIC",
    "hy ARMENIAN", "as ASSAMESE", "ay AYMARA", "az AZERBAIJANI", "ba BASHKIR", "eu BASQUE",
    "bn BENGALI,BANGLA", "bz BHUTANI", "bh BIHARI", "bi BISLAMA", "br BRETON", "bg BULGARIAN", "my BURMESE",
    "be BYELORUSSIAN", "km CAMBODIAN", "ca CATALAN", "zh CHINESE", "co CORSICAN", "hr CROATIAN", "cs CZECH",
    "da DANISH", "nl DUTCH", "en ENGLISH", "eo ESPERANTO", "et ESTONIAN", "fo FAROESE", "fj FIJI FJ",
    "fi FINNISH", "fr FRENCH", "fy FRISIAN", "mk FUROM", "gl GALICIAN", "ka GEORGIAN", "de GERMAN",
    "el GREEK", "kl GREENLANDIC", "gn GUARANI", "gu GUJARATI", "ha HAUSA", "iw HEBREW", "hi HINDI",
    "hu HUNGARIAN", "is ICELANDIC", "in INDONESIAN", "ia INTERLINGUA", "ie INTERLINGUE", "ik INUPIAK",
    "ga IRISH", "it ITALIAN", "ja JAPANESE", "jv JAVANESE", "kn KANNADA", "ks KASHMIRI", "kk KAZAKH",
    "rw KINYARWANDA", "ky KIRGHIZ", "rn KURUNDI", "ko KOREAN", "ku KURDISH", "lo LAOTHIAN", "la LATIN",
    "lv LATVIAN,LETTISH", "ln LINGALA", "lt LITHUANIAN", "mg MALAGASY", "ms MS", "ml MALAYALAM", "mt MALTESE",
    "mi MAORI", "mr MARATHI", "mo MOLDAVIAN", "mn MONGOLIAN", "na NAURU", "ne NEPALI", "no NORWEGIAN",
    "oc OCCITAN", "or ORIYA", "ps PASHTO,PUSHTO", "fa PERSIAN (farsi)", "pl POLISH", "pt PORTUGUESE",
    "pa PUNJABI", "qu QUECHUA", "rm RHAETO-ROMANCE", "ro ROMANIAN", "ru RUSSIAN", "sm SAMOAN", "sg SANGHO",
    "sa SANSKRIT", "gb SCOTS", "sr SERBIAN", "sh SERBO-CROATIAN", "st SESOTHO", "tn SETSWANA", "sn SHONA",
    "sd SINDHI", "si SINGHALESE", "ss SISWATI", "sk SLOVAK", "sl SLOVENIAN", "so SOMALI", "es SPANISH",
    "su SUNDANESE", "sw SWAHILI", "sv SWEDISH", "tl TAGALOG", "tg TAJIK", "ta TAMIL", "tt TATAR", "te TELUGU",
    "th THAI TH", "bo TIBETAN", "ti TIGRINYA", "to TONGA", "ts TSONGA", "tr TURKISH", "tk TURKMEN", "tw TWI",
    "uk UKRAINIAN", "ur URDU", "uz UZBEK", "vi VIETNAMESE", "vo VOLAPUK", "cy WELSH", "wo WOLOF", "xh XHOSA",
    "yi YIDDISH", "yo YORUBA", "zu ZULU",
};

} // namespace mw
