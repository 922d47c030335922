#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace credentials {

/// The characters that a credential goes on in.
enum class Alphabet : std::uint16_t {
  digits = 1 << 0,
  hex = 1 << 1,
  uuid = 1 << 2,          ///< hex and "-"
  capitals = 1 << 3,      ///< and digits
  capitalParts = 1 << 4,  ///< and digits and "-"
  smalls = 1 << 5,        ///< and digits
  letters = 1 << 6,       ///< and digits
  urlSafe = 1 << 7,       ///< letters, digits, "-", "_"
  dotted = 1 << 8,        ///< and "."
  base64 = 1 << 9,        ///< of both kinds, "=" too
  path = 1 << 10,         ///< of a URL
  any = 1 << 11,          ///< whatever credentials are made of
};

using Length = std::uint16_t;

constexpr Length kAnyLength = 0xFFFF;

/// What begins with a prefix of its maker's: in which characters it goes on, and how many
/// there must be. Prefixes that begin ordinary names as well need a body that nobody would
/// choose as a name.
struct Format {
  std::string_view prefix;
  Alphabet alphabet;
  Length shortest;
  Length longest = kAnyLength;
  bool mustLookOdd = false;
};

constexpr bool kOdd = true;

/// By maker. Prefixes, alphabets and lengths are those that the makers document and that the
/// public lists of secret scanners agree on; the lengths are lower bounds where they vary.
constexpr Format kFormats[] = {
    // Makers of AI.
    {"sk-", Alphabet::urlSafe, 6, kAnyLength, kOdd},
    {"sk-ant-", Alphabet::urlSafe, 3},
    {"sk-proj-", Alphabet::urlSafe, 20},
    {"sk-svcacct-", Alphabet::urlSafe, 20},
    {"sk-admin-", Alphabet::urlSafe, 20},
    {"sk-or-v1-", Alphabet::hex, 32},
    {"sk-lf-", Alphabet::uuid, 30},
    {"sk_", Alphabet::hex, 40, 64},
    {"sess-", Alphabet::letters, 30, 60, kOdd},
    {"hf_", Alphabet::letters, 6, kAnyLength, kOdd},
    {"api_org_", Alphabet::letters, 30},
    {"r8_", Alphabet::letters, 20},
    {"gsk_", Alphabet::urlSafe, 20},
    {"xai-", Alphabet::urlSafe, 20},
    {"pplx-", Alphabet::urlSafe, 20},
    {"nvapi-", Alphabet::urlSafe, 20},
    {"lsv2_", Alphabet::urlSafe, 20},
    {"ls__", Alphabet::hex, 32},
    {"tvly-", Alphabet::urlSafe, 20},
    {"fc-", Alphabet::hex, 32, 32},
    {"jina_", Alphabet::urlSafe, 40},
    {"csk-", Alphabet::letters, 30, kAnyLength, kOdd},
    {"fw_", Alphabet::letters, 20, 40, kOdd},
    {"tgp_v1_", Alphabet::urlSafe, 30},
    {"pa-", Alphabet::urlSafe, 40, 60, kOdd},
    {"pcsk_", Alphabet::urlSafe, 40},
    {"e2b_", Alphabet::hex, 32},
    {"apify_api_", Alphabet::letters, 30},
    {"apify_proxy_", Alphabet::letters, 30},
    {"rpa_", Alphabet::letters, 32, kAnyLength, kOdd},
    {"ak-", Alphabet::letters, 20, 24, kOdd},
    {"as-", Alphabet::letters, 20, 24, kOdd},
    {"wandb_v1_", Alphabet::urlSafe, 30},
    {"local-", Alphabet::hex, 40, 40},
    {"sgai-", Alphabet::uuid, 36},
    {"m0-", Alphabet::letters, 36, 48, kOdd},
    {"ctx7sk-", Alphabet::uuid, 30},
    {"key_", Alphabet::hex, 40, 80},
    {"sk_car_", Alphabet::letters, 20},
    {"ABSK", Alphabet::base64, 80},
    {"bedrock-api-key-", Alphabet::base64, 40},
    {"AQ.Ab8", Alphabet::urlSafe, 30},
    {"phx_", Alphabet::letters, 40},
    {"sgp_", Alphabet::urlSafe, 40},
    {"slk_", Alphabet::hex, 64},
    // Clouds.
    {"AKIA", Alphabet::capitals, 8},
    {"ASIA", Alphabet::capitals, 16},
    {"ABIA", Alphabet::capitals, 16, 16},
    {"ACCA", Alphabet::capitals, 16, 16, kOdd},
    {"A3T", Alphabet::capitals, 17, 17, kOdd},
    {"FwoGZXIvYXdz", Alphabet::base64, 60},
    {"FQoGZXIvYXdz", Alphabet::base64, 60},
    {"IQoJb3JpZ2lu", Alphabet::base64, 60},
    {"amzn.mws.", Alphabet::uuid, 36},
    {"amzn1.oa2-cs.v1.", Alphabet::letters, 32},
    {"Atza|", Alphabet::base64, 60},
    {"Atzr|", Alphabet::base64, 60},
    {"da2-", Alphabet::smalls, 26, 26},
    {"AIza", Alphabet::urlSafe, 30},
    {"ya29.", Alphabet::dotted, 20},
    {"GOCSPX-", Alphabet::urlSafe, 24},
    {"1//0", Alphabet::urlSafe, 30},
    {"GOOG", Alphabet::capitals, 20, 61, kOdd},
    {"4/0A", Alphabet::urlSafe, 40},
    {"LTAI", Alphabet::letters, 12, 30, kOdd},
    {"AKID", Alphabet::letters, 28, 40, kOdd},
    {"AKLT", Alphabet::letters, 30, 60, kOdd},
    {"ALTAK", Alphabet::letters, 17, 24, kOdd},
    {"JDC_", Alphabet::capitals, 20},
    {"YCAJ", Alphabet::urlSafe, 20, 24, kOdd},
    {"YCP", Alphabet::urlSafe, 36, 40, kOdd},
    {"AQVN", Alphabet::urlSafe, 34, 40, kOdd},
    {"t1.9eu", Alphabet::dotted, 60},
    {"y0_", Alphabet::urlSafe, 50},
    {"SCW", Alphabet::capitals, 17, 17, kOdd},
    {"dop_v1_", Alphabet::hex, 40},
    {"doo_v1_", Alphabet::hex, 40},
    {"dor_v1_", Alphabet::hex, 40},
    {"fo1_", Alphabet::urlSafe, 40},
    {"fm1r_", Alphabet::base64, 60},
    {"fm1a_", Alphabet::base64, 60},
    {"fm2_", Alphabet::base64, 60},
    {"HRKU-", Alphabet::urlSafe, 32},
    {"nfp_", Alphabet::letters, 30},
    {"nfc_", Alphabet::letters, 30},
    {"vcp_", Alphabet::letters, 24, kAnyLength, kOdd},
    {"vck_", Alphabet::letters, 24, kAnyLength, kOdd},
    {"vci_", Alphabet::letters, 24, kAnyLength, kOdd},
    {"rnd_", Alphabet::letters, 24, 40, kOdd},
    {"rw_Fe26.", Alphabet::any, 30},
    {"sbp_", Alphabet::hex, 40},
    {"sb_secret_", Alphabet::urlSafe, 20},
    {"napi_", Alphabet::smalls, 40, 80},
    {"pscale_tkn_", Alphabet::dotted, 30},
    {"pscale_pw_", Alphabet::dotted, 30},
    {"pscale_oauth_", Alphabet::dotted, 30},
    {"dapi", Alphabet::uuid, 32, 36, kOdd},
    {"dkea", Alphabet::hex, 32, 32},
    {"dsapi", Alphabet::hex, 32, 32},
    {"dose", Alphabet::hex, 32, 32},
    {"4b1d", Alphabet::letters, 38, 38, kOdd},
    {"v1.0-", Alphabet::uuid, 150},
    {"cfut_", Alphabet::letters, 36},
    {"cfat_", Alphabet::letters, 36},
    {"cfk_", Alphabet::letters, 36},
    {"sha256~", Alphabet::urlSafe, 40},
    {"AVNS_", Alphabet::urlSafe, 12},
    // Forges.
    {"github_pat_", Alphabet::urlSafe, 3},
    {"ghp_", Alphabet::urlSafe, 3},
    {"gho_", Alphabet::urlSafe, 8},
    {"ghu_", Alphabet::urlSafe, 8},
    {"ghs_", Alphabet::urlSafe, 8},
    {"ghr_", Alphabet::urlSafe, 8},
    {"GHSAT0AAAA", Alphabet::capitals, 20},
    {"glpat-", Alphabet::dotted, 3},
    {"glrt-", Alphabet::dotted, 16},
    {"glrtr-", Alphabet::dotted, 16},
    {"gldt-", Alphabet::urlSafe, 16},
    {"glptt-", Alphabet::hex, 20},
    {"glft-", Alphabet::urlSafe, 16},
    {"glffct-", Alphabet::urlSafe, 16},
    {"glimt-", Alphabet::urlSafe, 16},
    {"glagent-", Alphabet::urlSafe, 30},
    {"gloas-", Alphabet::urlSafe, 30},
    {"glsoat-", Alphabet::urlSafe, 16},
    {"glcbt-", Alphabet::urlSafe, 16},
    {"glwt-", Alphabet::urlSafe, 16},
    {"GR1348941", Alphabet::urlSafe, 16},
    {"ATBB", Alphabet::letters, 24, 60, kOdd},
    {"ATCTT3", Alphabet::base64, 40},
    {"ATATT3", Alphabet::base64, 40},
    {"ATSTT3", Alphabet::base64, 40},
    {"ATOAT3", Alphabet::base64, 40},
    {"BBDC-", Alphabet::base64, 36},
    {"ATTA", Alphabet::hex, 60, 80},
    {"JQQJ99", Alphabet::letters, 60},
    // Chats.
    {"xoxb-", Alphabet::urlSafe, 3},
    {"xoxa-", Alphabet::urlSafe, 3},
    {"xoxc-", Alphabet::urlSafe, 8},
    {"xoxd-", Alphabet::base64, 8},
    {"xoxe-", Alphabet::urlSafe, 3},
    {"xoxe.", Alphabet::dotted, 20},
    {"xoxo-", Alphabet::urlSafe, 8},
    {"xoxp-", Alphabet::urlSafe, 3},
    {"xoxr-", Alphabet::urlSafe, 3},
    {"xoxs-", Alphabet::urlSafe, 3},
    {"xapp-", Alphabet::urlSafe, 20},
    {"xwfp-", Alphabet::urlSafe, 20},
    {"syt_", Alphabet::urlSafe, 20},
    {"mct_", Alphabet::urlSafe, 30},
    {"mat_", Alphabet::urlSafe, 30, 60, kOdd},
    {"oauth:", Alphabet::smalls, 30, 30},
    {"mfa.", Alphabet::urlSafe, 60},
    // Payment and trade.
    {"rk_live_", Alphabet::urlSafe, 8},
    {"rk_test_", Alphabet::urlSafe, 8},
    {"rk_prod_", Alphabet::urlSafe, 8},
    {"sk_live_", Alphabet::urlSafe, 8},
    {"sk_test_", Alphabet::urlSafe, 8},
    {"sk_prod_", Alphabet::urlSafe, 8},
    {"sk_sbox_", Alphabet::urlSafe, 20},
    {"whsec_", Alphabet::base64, 20},
    {"EAAA", Alphabet::urlSafe, 50, kAnyLength, kOdd},
    {"EAAC", Alphabet::letters, 60},
    {"EAAM", Alphabet::letters, 60},
    {"EAAG", Alphabet::letters, 60},
    {"EAAB", Alphabet::letters, 60},
    {"EAAD", Alphabet::letters, 60},
    {"EAAE", Alphabet::letters, 60},
    {"EAAF", Alphabet::letters, 60},
    {"EAAJ", Alphabet::letters, 60},
    {"EAAl", Alphabet::urlSafe, 60},
    {"sq0atp-", Alphabet::urlSafe, 20},
    {"sq0csp-", Alphabet::urlSafe, 20},
    {"access_token$", Alphabet::any, 30},
    {"access-production-", Alphabet::uuid, 30},
    {"access-sandbox-", Alphabet::uuid, 30},
    {"access-development-", Alphabet::uuid, 30},
    {"FLWSECK", Alphabet::urlSafe, 12},
    {"live_", Alphabet::urlSafe, 24, kAnyLength, kOdd},
    {"test_", Alphabet::letters, 30, 36, kOdd},
    {"pdl_live_apikey_", Alphabet::urlSafe, 20},
    {"pdl_sdbx_apikey_", Alphabet::urlSafe, 20},
    {"klarna_live_api_", Alphabet::base64, 20},
    {"klarna_test_api_", Alphabet::base64, 20},
    {"duffel_live_", Alphabet::urlSafe, 30},
    {"duffel_test_", Alphabet::urlSafe, 30},
    {"shippo_live_", Alphabet::hex, 30},
    {"shippo_test_", Alphabet::hex, 30},
    {"EZAK", Alphabet::letters, 54, 54},
    {"EZTK", Alphabet::letters, 54, 54},
    {"shpat_", Alphabet::hex, 24},
    {"shpca_", Alphabet::hex, 24},
    {"shppa_", Alphabet::hex, 24},
    {"shpss_", Alphabet::hex, 24},
    {"shptka_", Alphabet::hex, 24},
    {"rzp_live_", Alphabet::letters, 14},
    {"rzp_test_", Alphabet::letters, 14},
    {"AQE", Alphabet::base64, 80, kAnyLength, kOdd},
    {"APP_USR-", Alphabet::urlSafe, 40},
    {"xprv9", Alphabet::letters, 100},
    {"nsec1", Alphabet::smalls, 58, 58},
    // Mail and messages.
    {"SG.", Alphabet::dotted, 40},
    {"key-", Alphabet::hex, 32, 32},
    {"re_", Alphabet::urlSafe, 20, 48, kOdd},
    {"xkeysib-", Alphabet::urlSafe, 40},
    {"xsmtpsib-", Alphabet::urlSafe, 40},
    {"mlsn.", Alphabet::letters, 40},
    {"md-", Alphabet::urlSafe, 22, 22, kOdd},
    {"SK", Alphabet::hex, 32, 32},
    {"sm_aat_", Alphabet::letters, 16},
    {"sm_pat_", Alphabet::letters, 16},
    {"sm_sat_", Alphabet::letters, 16},
    {"PMMT-", Alphabet::urlSafe, 30},
    {"tk_", Alphabet::smalls, 29, 29, kOdd},
    {"u+", Alphabet::urlSafe, 18, 18, kOdd},
    {"pdus+", Alphabet::urlSafe, 20},
    // CI, infrastructure and its watchers.
    {"CCIPAT_", Alphabet::urlSafe, 30},
    {"CCIPRJ_", Alphabet::urlSafe, 30},
    {"bkua_", Alphabet::hex, 32},
    {"bkct_", Alphabet::letters, 32},
    {"bkpt_", Alphabet::letters, 32},
    {"pul-", Alphabet::hex, 40, 40},
    {"dp.pt.", Alphabet::letters, 36},
    {"dp.st.", Alphabet::dotted, 36},
    {"dp.ct.", Alphabet::letters, 36},
    {"dp.sa.", Alphabet::letters, 36},
    {"dp.scim.", Alphabet::letters, 36},
    {"dp.audit.", Alphabet::letters, 36},
    {"hvs.", Alphabet::urlSafe, 24},
    {"hvb.", Alphabet::urlSafe, 40},
    {"hvr.", Alphabet::urlSafe, 40},
    {"s.", Alphabet::letters, 24, 24, kOdd},
    {"b.AAAAAQ", Alphabet::urlSafe, 80},
    {"AGE-SECRET-KEY-1", Alphabet::capitals, 50},
    {"AGE-PLUGIN-", Alphabet::capitalParts, 40},
    {"ops_eyJ", Alphabet::base64, 60},
    {"A3-", Alphabet::capitalParts, 30, 40, kOdd},
    {"st.", Alphabet::dotted, 60, kAnyLength, kOdd},
    {"sqp_", Alphabet::hex, 40},
    {"squ_", Alphabet::hex, 40},
    {"sqa_", Alphabet::hex, 40},
    {"sntryu_", Alphabet::hex, 40},
    {"sntrys_", Alphabet::base64, 40},
    {"glsa_", Alphabet::urlSafe, 30},
    {"glc_", Alphabet::base64, 32},
    {"eyJrIjoi", Alphabet::base64, 60},
    {"NRAK-", Alphabet::capitals, 20},
    {"NRAA-", Alphabet::hex, 20},
    {"NRII-", Alphabet::urlSafe, 20},
    {"NRIQ-", Alphabet::urlSafe, 20},
    {"NRRA-", Alphabet::hex, 30},
    {"NRSP-", Alphabet::urlSafe, 30},
    {"NRJS-", Alphabet::hex, 15},
    {"dt0c01.", Alphabet::dotted, 60},
    {"dt0s01.", Alphabet::dotted, 60},
    {"dt0s02.", Alphabet::dotted, 60},
    {"dt0s16.", Alphabet::dotted, 60},
    {"hcaik_", Alphabet::letters, 40},
    {"hcbik_", Alphabet::letters, 40},
    {"hcamk_", Alphabet::letters, 40},
    {"xaat-", Alphabet::uuid, 36},
    {"xapt-", Alphabet::uuid, 36},
    {"odt_", Alphabet::letters, 32},
    {"pnu_", Alphabet::letters, 36, 36},
    {"pnb_", Alphabet::letters, 36, 36},
    {"tskey-", Alphabet::urlSafe, 20},
    {"nbp_", Alphabet::letters, 36},
    {"tk-us-", Alphabet::urlSafe, 40},
    {"API-", Alphabet::capitals, 25, 40, kOdd},
    {"rdme_", Alphabet::smalls, 60},
    {"fio-u-", Alphabet::urlSafe, 50},
    {"SWMTKN-1-", Alphabet::urlSafe, 50},
    {"K10", Alphabet::any, 64, kAnyLength, kOdd},
    {"token-", Alphabet::smalls, 54, 62, kOdd},
    {"kubeconfig-", Alphabet::any, 60, kAnyLength, kOdd},
    {"cmVmd", Alphabet::letters, 50, 70, kOdd},
    {"AKCp", Alphabet::letters, 60, 80},
    {"pat.", Alphabet::dotted, 60, 90, kOdd},
    {"sat.", Alphabet::dotted, 60, 90, kOdd},
    {"aio_", Alphabet::letters, 28, 28},
    {"LS0tLS1CRUdJTi", Alphabet::base64, 40},
    {"ZXlK", Alphabet::base64, 60, kAnyLength, kOdd},
    {"sdk-", Alphabet::uuid, 36, 36},
    {"api-", Alphabet::uuid, 36, 36},
    // Package registries.
    {"npm_", Alphabet::letters, 20},
    {"pypi-AgE", Alphabet::urlSafe, 40},
    {"rubygems_", Alphabet::hex, 40},
    {"cio", Alphabet::letters, 32, 32, kOdd},
    {"oy2", Alphabet::smalls, 43, 43},
    {"dckr_pat_", Alphabet::urlSafe, 20},
    {"dckr_oat_", Alphabet::urlSafe, 20},
    {"CLOJARS_", Alphabet::letters, 40},
    {"jsrp_", Alphabet::letters, 30},
    {"jsrs_", Alphabet::letters, 30},
    {"pyx-key-v1-", Alphabet::urlSafe, 30},
    // Offices, design, data.
    {"ntn_", Alphabet::letters, 40},
    {"secret_", Alphabet::letters, 40, 50, kOdd},
    {"lin_api_", Alphabet::letters, 30},
    {"lin_oauth_", Alphabet::letters, 40},
    {"figd_", Alphabet::urlSafe, 30},
    {"figu_", Alphabet::urlSafe, 30},
    {"PMAK-", Alphabet::urlSafe, 40},
    {"PMAT-", Alphabet::urlSafe, 24},
    {"pat", Alphabet::dotted, 78, 80, kOdd},
    {"pat-na1-", Alphabet::uuid, 36},
    {"pat-eu1-", Alphabet::uuid, 36},
    {"CFPAT-", Alphabet::urlSafe, 40},
    {"tfp_", Alphabet::urlSafe, 40},
    {"dG9rO", Alphabet::base64, 50, 70, kOdd},
    {"ico-", Alphabet::letters, 32, 32},
    {"sl.", Alphabet::urlSafe, 120},
    {"sk.eyJ", Alphabet::dotted, 50},
    {"p8e-", Alphabet::urlSafe, 32, 36},
    {"pk_", Alphabet::hex, 34, 34},
    {"00D", Alphabet::any, 90, 140, kOdd},
    {"00", Alphabet::urlSafe, 40, 40, kOdd},
    {"sc_", Alphabet::any, 70, kAnyLength, kOdd},
    {"EAACEdEose0cBA", Alphabet::letters, 10},
    {"AAAAAAAAAAAAAAAAAAAA", Alphabet::base64, 60, kAnyLength, kOdd},
    {"IGQV", Alphabet::letters, 80},
    {"act.", Alphabet::any, 50, kAnyLength, kOdd},
    // The secret part of webhooks' URLs.
    {"hooks.slack.com/services/", Alphabet::path, 20},
    {"hooks.slack.com/workflows/", Alphabet::path, 20},
    {"hooks.slack.com/triggers/", Alphabet::path, 20},
    {"hooks.slack-gov.com/services/", Alphabet::path, 20},
    {"discord.com/api/webhooks/", Alphabet::path, 20},
    {"discordapp.com/api/webhooks/", Alphabet::path, 20},
    {"webhook.office.com/webhookb2/", Alphabet::path, 20},
    {"outlook.office.com/webhook/", Alphabet::path, 20},
    {"hooks.zapier.com/hooks/catch/", Alphabet::path, 8},
    {"maker.ifttt.com/use/", Alphabet::path, 10},
    {"open.feishu.cn/open-apis/bot/v2/hook/", Alphabet::path, 10},
    {"open.larksuite.com/open-apis/bot/v2/hook/", Alphabet::path, 10},
    {"hc-ping.com/", Alphabet::path, 16},
    {"webhook.site/", Alphabet::path, 30},
    {"canarytokens.com/", Alphabet::path, 20},
};

/// What is known by something in its middle or at its end.
struct MiddleFormat {
  std::string_view middle;
  Alphabet before;
  Length leastBefore;
  Length mostBefore;
  Alphabet after;
  Length leastAfter;
  Length mostAfter;
  bool mustLookRandom = false;
  char lastBefore = '\0';  ///< what must stand directly before the middle, if anything
};

constexpr MiddleFormat kMiddleFormats[] = {
    // The tokens of Telegram's bots, and of Discord's.
    {":A", Alphabet::digits, 8, 12, Alphabet::urlSafe, 31, 38},
    {".", Alphabet::letters, 22, 28, Alphabet::dotted, 33, 46, true},
    // The secrets of clients of Azure.
    {"~", Alphabet::dotted, 3, 6, Alphabet::any, 30, 40, true, 'Q'},
    // Terraform, Mailchimp, MaxMind.
    {".atlasv1.", Alphabet::letters, 10, 20, Alphabet::base64, 40, 100},
    {"-us", Alphabet::hex, 32, 32, Alphabet::digits, 1, 2},
    {"_mmk", Alphabet::urlSafe, 36, 36, Alphabet::letters, 0, 0},
};

/// What is known by letters at a place counted from its end: Azure's for its pipelines, New
/// Relic's.
struct EndFormat {
  std::string_view mark;
  std::size_t behind;  ///< so many characters follow the mark
  std::size_t least;
  std::size_t most;
};

constexpr EndFormat kEndFormats[] = {{"AZDO", 4, 76, 90}, {"NRAL", 0, 34, 44}};

}  // namespace credentials
