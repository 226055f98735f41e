#include "setup/postcodes.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringDecoder>

namespace setup {
namespace {

// Debian's skkdic-extra puts it there.
const QString kDictionary = "/usr/share/skk/SKK-JISYO.zipcode";

constexpr const char* kKnown[] = {"0600001 北海道札幌市中央区北一条西",
                                  "0608588 北海道札幌市中央区北三条西",
                                  "0300803 青森県青森市安方",
                                  "0200023 岩手県盛岡市内丸",
                                  "9800014 宮城県仙台市青葉区本町",
                                  "9808671 宮城県仙台市青葉区国分町",
                                  "0100951 秋田県秋田市山王",
                                  "9902492 山形県山形市鉄砲町",
                                  "9608065 福島県福島市杉妻町",
                                  "3100852 茨城県水戸市笠原町",
                                  "3200027 栃木県宇都宮市塙田",
                                  "3710026 群馬県前橋市大手町",
                                  "3300063 埼玉県さいたま市浦和区高砂",
                                  "2600855 千葉県千葉市中央区市場町",
                                  "1000001 東京都千代田区千代田",
                                  "1000005 東京都千代田区丸の内",
                                  "1000006 東京都千代田区有楽町",
                                  "1010021 東京都千代田区外神田",
                                  "1030027 東京都中央区日本橋",
                                  "1040061 東京都中央区銀座",
                                  "1050004 東京都港区新橋",
                                  "1060032 東京都港区六本木",
                                  "1080075 東京都港区港南",
                                  "1100005 東京都台東区上野",
                                  "1400002 東京都品川区東品川",
                                  "1500002 東京都渋谷区渋谷",
                                  "1600022 東京都新宿区新宿",
                                  "1600023 東京都新宿区西新宿",
                                  "2310021 神奈川県横浜市中区日本大通",
                                  "2200012 神奈川県横浜市西区みなとみらい",
                                  "9500965 新潟県新潟市中央区新光町",
                                  "9300006 富山県富山市新総曲輪",
                                  "9200962 石川県金沢市広坂",
                                  "9100005 福井県福井市大手",
                                  "4000031 山梨県甲府市丸の内",
                                  "3800837 長野県長野市大字南長野",
                                  "5000833 岐阜県岐阜市神田町",
                                  "4200853 静岡県静岡市葵区追手町",
                                  "4500002 愛知県名古屋市中村区名駅",
                                  "4600008 愛知県名古屋市中区栄",
                                  "5140004 三重県津市栄町",
                                  "5200044 滋賀県大津市京町",
                                  "6008216 京都府京都市下京区東塩小路町",
                                  "5300001 大阪府大阪市北区梅田",
                                  "5410041 大阪府大阪市中央区北浜",
                                  "5420076 大阪府大阪市中央区難波",
                                  "6500044 兵庫県神戸市中央区東川崎町",
                                  "6300213 奈良県生駒市東生駒",
                                  "6400000 和歌山県和歌山市",
                                  "6800011 鳥取県鳥取市東町",
                                  "6900887 島根県松江市殿町",
                                  "7000824 岡山県岡山市北区内山下",
                                  "7300011 広島県広島市中区基町",
                                  "7530071 山口県山口市滝町",
                                  "7700941 徳島県徳島市万代町",
                                  "7600017 香川県高松市番町",
                                  "7900001 愛媛県松山市一番町",
                                  "7800870 高知県高知市本町",
                                  "8100001 福岡県福岡市中央区天神",
                                  "8120011 福岡県福岡市博多区博多駅前",
                                  "8400041 佐賀県佐賀市城内",
                                  "8500057 長崎県長崎市大黒町",
                                  "8620950 熊本県熊本市中央区水前寺",
                                  "8700022 大分県大分市大手町",
                                  "8800805 宮崎県宮崎市橘通東",
                                  "8900064 鹿児島県鹿児島市鴨池新町",
                                  "9000021 沖縄県那覇市泉崎"};

bool IsCode(const QByteArray& text) {
    return text.size() == 7 && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// The first text between slashes, without a note behind ";". Empty when it has characters that can't be read.
QString FirstCandidate(const QByteArray& line, int from) {
    const int end = line.indexOf('/', from);
    if (end < 0) return {};
    QStringDecoder decoder("EUC-JP");
    const QString text = decoder.decode(line.mid(from, end - from));
    if (decoder.hasError() || text.contains(QChar::ReplacementCharacter)) return {};
    return text.section(u';', 0, 0);
}

}  // namespace

Postcode SplitAddress(const QString& digits, const QString& address) {
    // Names such as 四日市市, 市川市, 余市郡 or 郡山市 hold the very characters that end a name, hence the order of the
    // trials. Wards are named with their city; only the big cities have them.
    static const QRegularExpression municipality(
        "^(東京都|北海道|大阪府|京都府|.{2,3}県)"
        "((?:札幌|仙台|さいたま|千葉|横浜|川崎|相模原|新潟|静岡|浜松|名古屋|京都|大阪|堺|神戸|岡山|広島|北九州|福岡|"
        "熊本)"
        "市.{1,4}?区|(?<=東京都).{1,3}?区|(?:四日市|廿日市|野々市)市|(?:大和郡山|郡山|蒲郡|小郡|郡上)市|"
        "(?:余市|高市|[^市]{1,5}?)郡(?:玉村|大町|.{1,6}?)[町村]|.{1,6}?市|.{1,6}?[町村])");
    const QString code = digits.left(3) + "-" + digits.mid(3);
    const auto match = municipality.match(address);
    if (!match.hasMatch()) return {code, address, {}};
    return {code, match.captured(0), address.mid(match.capturedLength(0))};
}

std::vector<Postcode> ReadPostcodes(const QString& file) {
    QFile dictionary(file);
    if (!dictionary.open(QIODevice::ReadOnly)) return {};
    std::vector<Postcode> found;
    QString last;
    while (!dictionary.atEnd()) {
        const QByteArray line = dictionary.readLine();
        const int slash = line.indexOf('/');
        if (slash < 8 || !IsCode(line.left(slash).trimmed())) continue;
        const QString digits = QString::fromLatin1(line.left(7));
        const QString address = FirstCandidate(line, slash + 1);
        if (address.isEmpty() || digits == last) continue;
        found.push_back(SplitAddress(digits, address));
        last = digits;
    }
    const auto byCode = [](const Postcode& a, const Postcode& b) { return a.code < b.code; };
    const auto sameCode = [](const Postcode& a, const Postcode& b) { return a.code == b.code; };
    std::stable_sort(found.begin(), found.end(), byCode);
    found.erase(std::unique(found.begin(), found.end(), sameCode), found.end());
    return found;
}

std::vector<Postcode> Postcodes() {
    std::vector<Postcode> found = ReadPostcodes(kDictionary);
    if (!found.empty()) return found;
    for (const QString line : kKnown)
        found.push_back(SplitAddress(line.left(7), line.mid(8)));
    return found;
}

}  // namespace setup
