#include "bv/Hash.h"

#include <climits>
#include <cstddef>
#include <string_view>
#include <type_traits>

#include <gtest/gtest.h>

#include "bv/String.h"

// The expected values are those that hash_values.py prints.

namespace
{

using bv::FNVHash32;
using bv::GetJenkinsHash;
using bv::GetLagaeHash;
using bv::GetPearsonHash;
using bv::String;

static_assert(std::is_same_v<decltype(&FNVHash32), unsigned int (*)(String const&) noexcept>);
static_assert(std::is_same_v<decltype(&GetJenkinsHash),
                             unsigned int (*)(void const*, unsigned long long, unsigned int) noexcept>);
static_assert(std::is_same_v<decltype(&GetPearsonHash),
                             unsigned char (*)(void const*, unsigned long long, unsigned char) noexcept>);
static_assert(std::is_same_v<decltype(&GetLagaeHash), unsigned int (*)(int, int) noexcept>);

constexpr std::string_view FOX = "The quick brown fox jumps over the lazy dog";

/// The bytes 0 to 255 in order.
struct AllBytes
{
    unsigned char bytes[256];

    AllBytes()
    {
        for (std::size_t i = 0; i < 256; ++i)
            bytes[i] = static_cast<unsigned char>(i);
    }
};

unsigned int Jenkins(std::string_view text, unsigned int seed)
{
    return GetJenkinsHash(text.data(), text.size(), seed);
}

unsigned char Pearson(std::string_view text, unsigned char seed)
{
    return GetPearsonHash(text.data(), text.size(), seed);
}

TEST(FNVHash32Test, AnEmptyTextGivesTheOffsetBasis)
{
    EXPECT_EQ(FNVHash32(String()), 2166136261U);
    EXPECT_EQ(FNVHash32(""), 0x811C9DC5U);
}

TEST(FNVHash32Test, ATextIsHashedByteByByte)
{
    EXPECT_EQ(FNVHash32(String("a")), 3826002220U);
    EXPECT_EQ(FNVHash32("a"), 0xE40C292CU);
    EXPECT_EQ(FNVHash32("b"), 0xE70C2DE5U);
    EXPECT_EQ(FNVHash32("foobar"), 0xBF9CF968U);
    EXPECT_EQ(FNVHash32(FOX.data()), 0x048FFF90U);
    EXPECT_EQ(FNVHash32("Brevane exception"), 0xEF127891U);
    EXPECT_EQ(FNVHash32("\x7F"), 0xFA0C4BCEU);
}

TEST(FNVHash32Test, BytesAbove127AreTakenUnsigned)
{
    EXPECT_EQ(FNVHash32("Gr\xC3\xBC\xC3\x9F"
                        "e, \xE4\xB8\x96\xE7\x95\x8C \xF0\x9F\x98\x80"),
              0x8E4A56A3U);
}

TEST(FNVHash32Test, TextThatCameInAsUTF16IsHashedAsUTF8)
{
    EXPECT_EQ(FNVHash32(L"Gr\u00FC\u00DFe, \u4E16\u754C \U0001F600"), 0x8E4A56A3U);
}

TEST(FNVHash32Test, TheHashEndsAtTheTerminatingNUL)
{
    // Only a write through the const pointer can put a NUL inside a text.
    String const text = "abc";
    const_cast<char*>(text.ToCharArray())[1] = '\0';
    EXPECT_EQ(FNVHash32(text), 0xE40C292CU); // that of "a"
}

TEST(JenkinsHashTest, TextIsHashedByteByByte)
{
    EXPECT_EQ(Jenkins("a", 0), 3392050242U);
    EXPECT_EQ(Jenkins("a", 0), 0xCA2E9442U);
    EXPECT_EQ(Jenkins(FOX, 0), 0x519E91F5U);
}

TEST(JenkinsHashTest, TheSeedStartsTheHash)
{
    EXPECT_EQ(Jenkins("a", 1), 0x00DB819BU);
    EXPECT_EQ(Jenkins("a", 0xFFFFFFFFU), 0xDC7CB8DEU);
    AllBytes const all;
    EXPECT_EQ(GetJenkinsHash(all.bytes, 256, 0), 0xEF2A46BDU);
    EXPECT_EQ(GetJenkinsHash(all.bytes, 256, 0xDEADBEEFU), 0x076B4BE4U);
}

TEST(JenkinsHashTest, WithoutBytesTheFinishingStepsAreAppliedToTheSeed)
{
    char const byte = 'a';
    EXPECT_EQ(GetJenkinsHash(&byte, 0, 0), 0U);
    EXPECT_EQ(GetJenkinsHash(&byte, 0, 1), 0x00048009U);
    EXPECT_EQ(GetJenkinsHash(&byte, 0, 0x12345678U), 0x5C2FF0D9U);
    EXPECT_EQ(GetJenkinsHash(&byte, 0, 0xFFFFFFFFU), 0xFFE40008U);
}

TEST(JenkinsHashTest, WithoutBytesThePointerMayBeNull)
{
    EXPECT_EQ(GetJenkinsHash(nullptr, 0, 0), 0U);
    EXPECT_EQ(GetJenkinsHash(nullptr, 0, 1), 0x00048009U);
}

TEST(JenkinsHashTest, ZeroBytesCount)
{
    std::string_view const zeros("\0\0\0\0", 4);
    EXPECT_EQ(Jenkins(zeros, 0), 0U);
    EXPECT_EQ(Jenkins(zeros, 1), 0x009DBEE6U);
}

TEST(JenkinsHashTest, BytesAbove127AreTakenUnsigned)
{
    EXPECT_EQ(Jenkins("\xFF", 0), 0xC7B20F1DU);
    EXPECT_EQ(Jenkins("\x80\xFF", 0x80000000U), 0x55F51BACU);
}

TEST(JenkinsHashTest, TheHashOfOnePieceSeedsTheNext)
{
    EXPECT_EQ(Jenkins("b", Jenkins("a", 0)), 0x5D6C4462U);
}

// clang-format off
constexpr unsigned char PEARSON_OF_ONE_BYTE[256] = {
     92, 213, 150, 172, 106,  87, 185,  17, 113, 198, 216,  69, 182, 251, 234, 132,
     22,  73, 120, 255, 179, 153, 143, 139, 195,  41, 190, 127, 201, 191,   8,  60,
    252,  56,  39, 104,  53, 222, 247,  51, 154,  37, 123,  59,  34,  49, 236,  82,
    230, 174, 149, 128, 137,  85, 189, 165,  43, 156,   6,  75, 243,  13, 163, 101,
    210, 112, 164, 158,  95, 235,  33, 186, 184,   1,  79, 124, 144,  46,  16,  12,
     54,  93,  40, 133, 166, 100,  15, 126, 140,   5,  65, 194,  48,  45, 119, 212,
    175, 250, 187, 117, 183,   3,  67,  91, 155, 168, 134,  29,  27, 122,  84, 199,
     42,  90, 130,  38, 220, 178,  89, 246, 192, 227,  86, 242, 145, 169, 146, 142,
    108,  10,  66, 152,   4, 200,  36,  62, 237, 105, 217,  25, 171,  57,  35,  26,
     61,  83,  20, 109, 167, 162,  99, 224, 221,   2,  68,  58,  28,  81, 135,  74,
     31, 228, 233,  44, 219, 116, 231, 205, 232, 160, 202,  14, 114,  64,  24, 203,
    193, 218, 131, 138,  72, 211, 188, 111,  30, 254, 161,   7,  98, 103, 240, 115,
    176, 196,  18, 223, 151, 148, 147, 136, 118,  63, 215, 129, 225,  76,  94, 181,
    170, 253, 159, 244, 238,  50, 204, 177,  47, 214, 229, 206, 208, 249, 239,  78,
    173,  19, 245,   9, 209,  88, 102, 226, 110,  52,   0,  32, 125, 180, 121,  55,
     97,  70, 197,  71,  77,  96, 107, 241,  11, 157, 248, 207,  23, 141,  80,  21,
};
// clang-format on

TEST(PearsonHashTest, ASingleByteWithSeedZeroReadsTheTable)
{
    for (unsigned int i = 0; i < 256; ++i)
    {
        auto const byte = static_cast<unsigned char>(i);
        EXPECT_EQ(GetPearsonHash(&byte, 1, 0), PEARSON_OF_ONE_BYTE[i]) << i;
    }
    unsigned char const zero = 0;
    EXPECT_EQ(GetPearsonHash(&zero, 1, 0), 92);
}

TEST(PearsonHashTest, TheSeedIsCombinedWithTheFirstByte)
{
    for (unsigned int i = 0; i < 256; ++i)
    {
        auto const byte = static_cast<unsigned char>(i);
        EXPECT_EQ(GetPearsonHash(&byte, 1, 0xA5), PEARSON_OF_ONE_BYTE[i ^ 0xA5]) << i;
    }
}

TEST(PearsonHashTest, TextIsHashedByteByByte)
{
    EXPECT_EQ(Pearson(FOX, 0), 205);
    EXPECT_EQ(Pearson(FOX, 255), 4);
    EXPECT_EQ(Pearson("a", 1), 175);
    EXPECT_EQ(Pearson("\xFF", 255), 92);
    EXPECT_EQ(Pearson(std::string_view("\0\0\0\0", 4), 0), 102);
    AllBytes const all;
    EXPECT_EQ(GetPearsonHash(all.bytes, 256, 0), 97);
    EXPECT_EQ(GetPearsonHash(all.bytes, 256, 77), 102);
}

TEST(PearsonHashTest, WithoutBytesTheSeedComesBack)
{
    char const byte = 'a';
    for (unsigned int seed = 0; seed < 256; ++seed)
    {
        EXPECT_EQ(GetPearsonHash(&byte, 0, static_cast<unsigned char>(seed)), seed);
        EXPECT_EQ(GetPearsonHash(nullptr, 0, static_cast<unsigned char>(seed)), seed);
    }
    EXPECT_EQ(GetPearsonHash(&byte, 0, 77), 77);
}

TEST(PearsonHashTest, HashingPieceByPieceIsHashingTheWhole)
{
    for (std::size_t split = 0; split <= FOX.size(); ++split)
        EXPECT_EQ(Pearson(FOX.substr(split), Pearson(FOX.substr(0, split), 0)), 205) << split;
}

// A row for each x, a letter for each y from 0 to 36; A stands for 0.
constexpr char const* LAGAE_FROM_0_TO_36[37] = {
    "XSMWBFGIJVVKBTDSOVPTGODEOIOUNPPFRATHL", "SFXLGEIDPMTUEOCHTDNKQFIUPGTVKJEBJTJFB",
    "VPMXLXQEAXFRMQRPOPEWEARXVDJFOQBKDJLJE", "HCKDUGIGERHAEOUSEOBTTFSWAKCNJEBPFJSHH",
    "ABDJPAUJQNWJFTBDXGNGLDTOFFRRCRGWBUQUD", "JVFHMJEJFLJIOUDNKUTMKNMSPBXXRWMGNLNDF",
    "MPQSJATOKAOSIHCBEOVBTNHKKNWPRDWDINHAK", "PMGUWRXHEPJTEPAXVAWUKSUDPCWGOGUNUSDSS",
    "ALGTUIWDOREXJRCVVTVWFPBLASENUUQFVQOVJ", "BGSVNAKVEALSDGQIVQTENFHTLQFXRTHOTSRXI",
    "CIOVDIJOURUCULDDVHCDSMTJUJNOTUDPLPKQF", "VOPAVVENQUOLQRRHKRXXNVIGAXPGOVBGCGACR",
    "DQMKPAKLAKHCRKMRTARSNVFVBAWPVTDVRQWRN", "VLSAGRDHJXSIDPGDGEBHVVCFCLEINMGKFXJQW",
    "JPMKIPTBRPBCKDJFNWFBIQRNINGTVETHNGIAG", "HQIQTNPTSPPNVCFEEECPHKCDBMOPMGWJVBBVF",
    "VCJMGNPXNXDLARXCDXPHWOCSSERXFWWBGDNOS", "NJGLTRWSMGANVXKXJDFFJIHTKTQKLDUKKMRQP",
    "JGJCAIQQETQPMMDRCNQTFFIAJRMGBLIRRAXAR", "OOVMINFIRUEILNDEJTCNCJKQUJKDLBOEPMSMG",
    "BBCKCMRJKNEMWCNANRXLQUJNEJHGFGEVMMLNL", "KFMWVSUGLPNDEWDVLWRBNLXSUAQGGAUTAQPNR",
    "DKECSUGJQJFFAHJMSOLSRIKVCCPCICCAWTRTJ", "MJCNNONMVOBJIFAWCDGRRFDKHJGCUVCPIKBVP",
    "XSICDVUAHFCQORJVGFCISXQHNQFSWLETMOJXE", "GVPKGCPJITUITMVJDBLAPWWRODGSQNOUMSCSW",
    "IJLLQXDULLCBOSSVCXAAKOSIOEJDLDFKTDNPF", "BFXCKGFHXABSENDVOSBACBDKOFVDHAMNDAHKV",
    "UMJADQXDMFOKFBAJDVLIGXVXERNCNVPEMQCCR", "IDPLJKWEVDFTTSWXJFKFOKBIDOIUJCKQDQNLI",
    "KOPKRNOSCIWQLEGGHWGDRHWPCFTNBTIXSUEMN", "XWLTGGBXEHGRQOOWQXRPLMCANGFAJFKXBRXAS",
    "WSJHKBWVIFRAMWJVXOTTHVASIGCESSIMQDFNW", "MCKMTLWIBDFOUDAHSGJPIGKRULDPHWSLUCMPG",
    "HCLUNFJUCPNUJKWARIXTTCKFOIRKFQXPKRVQN", "EJNDUGWNBTXKFKNRKSBBMHNINKILIGVHNTUDD",
    "UFIMJDIJUPFROFJQDOIHURKDWKLHSSTTMEAMF",
};
constexpr char const* LAGAE_FROM_MINUS_37_TO_MINUS_1[37] = {
    "PKMTNMUVMESBUXRHCDAPVRWGWRAJXSKMOFCNU", "MJRTAVEBWGREBQRNVVRIROFPDIWKFHVPWMSRQ",
    "WOAQCIAMLTDJUTNKXHOOSDRHVLXQOAAJRLKAV", "IEETJDESKWMHMRCVVCGKIIDCKIATPIDLAWVHC",
    "OCPTRGXNSTBSDMHAAJFQFAMADKWDLDUABWVNU", "QJLEMQVPQEKQXAECXCNGTKRLBAXIOFWSCWIIF",
    "OWAIUBPTAPCPLNFLPSHSKRNCTPDCOMHVNOXAJ", "VFDHXQKAUOSUSWEAFDMMSITXJUIODAQTTJSHI",
    "HWNIUTURRJTHKPCKXWMGWWUCLKXHRHALOAWXM", "RWDOPHEVOTUNKBPKBFUQTJRSRDNRORVFWRAQE",
    "LNPXBULCHBKKERHSDFIORFRMCPIWEFTMMMUOL", "HQCLCKTERQLFPOWDXIOHIUORUIPBLDQEJMPIA",
    "MWSDHVKSOBFLCCDMLFNUPSOAWTOMRQBGIXHFS", "TLPRUWNUOQXWRQOCMRPXBHWOMSTLESSPXPJAF",
    "MCRCPPWPLKUNKCGTBJBALVMHVOBAEJCNFSGMB", "NWRQTBDQHSXJGSKNJPKKLRNOAMBOJWOXGINQW",
    "USELWOMXAULDVXTAEHUWEPKAVXWFNBDWUJQUD", "FCPJQMWBSSCSVBVLXXSBBTCIQKLUMXSTNMXOI",
    "RARXORDPOJECWREJFLHNQCHNCSKWPTHCWDLGA", "XNUIPTDEVXSLEORHNGUCEFUCCIOFLHSJTSWCQ",
    "FGHBBLDOXBUSTXDUTWHCLAXLJWAUVCDJLMHGQ", "ENQTFBAIJBTBNNCTRXKISBUXAMLTHSVTEVGBI",
    "FTMJGCLEJQQFAJEQDNXEGMCVFVRNMXJXFHSND", "RUHLAEDBFAKROXSEJCRANCEIKLRATJHUNHREG",
    "XOOWNLKTAWCFETDNNOISJBKWSMBMUKMNCMEQQ", "XXRWPWGBNFSFVDPTWFNKBTKIFTTPGQUPDHXJD",
    "AIUTGUXJVVWNRTXXGHAVNUCFFJOKIJKJXNXQV", "AGVIKHCNJEXTSJECARRHFNMLVRBKUWXJDBIJB",
    "GWBKAHOMLEUFHSDNTWVIWLCLEWPPDMMOONIVQ", "OFLONRDXAQWNBCWODHDREAMJKJSBKFISJDSAH",
    "WAXLAMKJOOGVSKFMCOVIIOEDKFJNIVAKFVEHK", "PSVLOFVDRHRTXPUHHGBVWRMIKSSRXQCQVIMTP",
    "JKRONFVPSPAJEUQFHJPFFEWSFNMPOLKRIUCHD", "DQTKWCWGGPTRBLFVPPOJOEMDNQECJEBHRCRQE",
    "PJWNCANBOFVMJDTXCHHMGCNMCPLJOAHIWVBSX", "VCMPIINRNJOCLIENCTKHSKEEMOSVPEHLIIRNO",
    "VLTEXEBWLWWDAXLTMVFTGSJQERHBFSAVXIOXQ",
};

TEST(LagaeHashTest, TheFirstPointsGiveTheirKnownValues)
{
    EXPECT_EQ(GetLagaeHash(0, 0), 23U);
    EXPECT_EQ(GetLagaeHash(1, 0), 18U);
    EXPECT_EQ(GetLagaeHash(0, 1), 18U);
    EXPECT_EQ(GetLagaeHash(12, 34), 22U);
}

TEST(LagaeHashTest, EveryEntryOfTheTablesCounts)
{
    for (int x = 0; x < 37; ++x)
        for (int y = 0; y < 37; ++y)
            EXPECT_EQ(GetLagaeHash(x, y), static_cast<unsigned int>(LAGAE_FROM_0_TO_36[x][y] - 'A')) << x << ", " << y;
}

TEST(LagaeHashTest, NegativeXWrapsWithTheEuclideanRemainder)
{
    for (int x = 0; x < 37; ++x)
        for (int y = 0; y < 37; ++y)
            EXPECT_EQ(GetLagaeHash(x - 37, y), static_cast<unsigned int>(LAGAE_FROM_MINUS_37_TO_MINUS_1[x][y] - 'A'))
                << x - 37 << ", " << y;
}

TEST(LagaeHashTest, FarAndNegativeCoordinatesWrap)
{
    // y is taken as its unsigned pattern, and P[i] + y wraps modulo 2^32 before its remainder is taken.
    constexpr int FAR_AWAY[] = {0, 1, -1, 123456789, -123456789, INT_MAX, -INT_MAX, INT_MIN};
    constexpr unsigned int EXPECTED[8][8] = {
        {23, 18, 1, 13, 16, 3, 16, 12}, // 0
        {18, 5, 2, 7, 19, 3, 1, 4},     // 1
        {21, 11, 6, 2, 1, 12, 14, 6},   // -1
        {11, 22, 1, 18, 20, 6, 19, 23}, // 123456789
        {13, 20, 0, 5, 19, 14, 7, 11},  // -123456789
        {23, 1, 22, 3, 19, 19, 7, 0},   // 2147483647
        {11, 12, 8, 12, 0, 2, 7, 11},   // -2147483647
        {4, 23, 20, 7, 23, 0, 18, 14},  // -2147483648
    };
    for (std::size_t i = 0; i < 8; ++i)
        for (std::size_t j = 0; j < 8; ++j)
            EXPECT_EQ(GetLagaeHash(FAR_AWAY[i], FAR_AWAY[j]), EXPECTED[i][j]) << FAR_AWAY[i] << ", " << FAR_AWAY[j];
}

TEST(LagaeHashTest, EveryValueFrom0To23OccursAndNoOther)
{
    unsigned int count[24] = {};
    for (int x = -1000; x < 1000; x += 7)
    {
        for (int y = -1000; y < 1000; y += 3)
        {
            unsigned int const hash = GetLagaeHash(x, y);
            ASSERT_LT(hash, 24U) << x << ", " << y;
            ++count[hash];
        }
    }
    for (unsigned int occurrences : count)
        EXPECT_GT(occurrences, 0U);
}

} // namespace
