#!/usr/bin/env python3
"""Writes the sample field dictionary and enum type file bundled with orvo.

    python3 data/make_sample_dictionary.py   # rewrites data/orvo-fields.def and data/orvo-enums.def

The output is deterministic; the generated files are committed, so nothing
needs to run this script unless the sample is to change.
"""
import os

HERE = os.path.dirname(os.path.abspath(__file__))
DATE = "14-Mar-2026"

fields = []  # (acronym, long name, fid, ripple, feed type, length, enum length or None, wire type, wire length)
by_name = {}


def field(acr, dde, fid, ftype, length, wire, wlen, ripple="NULL", enum_len=None):
    assert acr not in by_name, acr
    assert all(f[2] != fid for f in fields), fid
    entry = (acr, dde, fid, ripple, ftype, length, enum_len, wire, wlen)
    fields.append(entry)
    by_name[acr] = entry


def enum_field(acr, dde, fid, enum_len, wire="ENUM", ripple="NULL"):
    field(acr, dde, fid, "ENUMERATED", 3 if enum_len < 10 else 5, wire, 1 if wire == "ENUM" else 2,
          ripple=ripple, enum_len=enum_len)


def price(acr, dde, fid, ripple="NULL", wire="REAL64"):
    field(acr, dde, fid, "PRICE", 17, wire, 7, ripple=ripple)


# --- administrative fields, negative ids -------------------------------------
admin = [
    ("SYS_SEQ_NO", "SYSTEM SEQUENCE", "INTEGER", 15, "UINT64", 8),
    ("SYS_REC_TYPE", "RECORD TYPE", "INTEGER", 5, "UINT32", 2),
    ("SYS_LINK_ID", "LINK IDENTIFIER", "ALPHANUMERIC", 32, "ASCII_STRING", 32),
    ("SYS_LINK_NEXT", "NEXT LINK", "ALPHANUMERIC", 32, "ASCII_STRING", 32),
    ("SYS_LINK_PREV", "PREVIOUS LINK", "ALPHANUMERIC", 32, "ASCII_STRING", 32),
    ("SYS_PERM_MASK", "PERMISSION MASK", "BINARY", 16, "BUFFER", 16),
    ("SYS_SRC_STAMP", "SOURCE STAMP", "TIME_SECONDS", 8, "TIME", 5),
    ("SYS_DIAG_TEXT", "DIAGNOSTIC TEXT", "LONGALPHANUMERIC", 120, "UTF8_STRING", 120),
    ("SYS_ROUTE_QOS", "ROUTE QUALITY", "NONE", 0, "QOS", 0),
    ("SYS_ITEM_STATE", "ITEM STATE", "NONE", 0, "STATE", 0),
    ("SYS_BLOB", "OPAQUE PAYLOAD", "OPAQUETYPE", 255, "OPAQUE", 0),
    ("SYS_XML_META", "XML METADATA", "OPAQUETYPE", 255, "XML", 0),
    ("SYS_CHILD_LIST", "CHILD FIELD LIST", "NONE", 0, "FIELD_LIST", 0),
    ("SYS_ATTRIBS", "ATTRIBUTE ELEMENTS", "NONE", 0, "ELEM_LIST", 0),
    ("SYS_FILTERS", "FILTER ENTRIES", "NONE", 0, "FILTER_LIST", 0),
    ("SYS_PAGE_IMG", "PAGE IMAGE", "OPAQUETYPE", 255, "ANSI_PAGE", 0),
    ("SYS_VECTOR", "INDEXED VECTOR", "NONE", 0, "VECTOR", 0),
    ("SYS_KEYED_MAP", "KEYED MAP", "NONE", 0, "MAP", 0),
    ("SYS_ROW_SERIES", "ROW SERIES", "NONE", 0, "SERIES", 0),
    ("SYS_EMBED_MSG", "EMBEDDED MESSAGE", "NONE", 0, "MSG", 0),
    ("SYS_CODE_LIST", "CODE ARRAY", "NONE", 0, "ARRAY", 0),
    ("SYS_WIDE_TEXT", "WIDE TEXT", "LONGALPHANUMERIC", 80, "OMTES_STRING", 80),
    ("SYS_FLAGS", "SYSTEM FLAGS", "INTEGER", 10, "UINT", 4),
    ("SYS_LATENCY", "LATENCY MICROS", "NUMERIC", 12, "DOUBLE", 8),
    ("SYS_LOAD_PCT", "LOAD PERCENT", "NUMERIC", 8, "FLOAT", 4),
    ("SYS_STAMP_FULL", "FULL TIMESTAMP", "TIME", 20, "DATE_TIME", 11),
    ("SYS_BUILD_NO", "BUILD NUMBER", "INTEGER", 10, "INT32", 4),
    ("SYS_OFFSET", "CLOCK OFFSET", "INTEGER", 15, "INT64", 8),
]
for i, (acr, dde, ft, ln, wire, wl) in enumerate(admin):
    field(acr, dde, -(i + 1), ft, ln, wire, wl)
enum_field("SYS_ORIGIN", "ORIGIN KIND", -40, 4)
enum_field("SYS_SEVERITY", "DIAG SEVERITY", -41, 8)
field("SYS_LAST_ADMIN", "LAST ADMIN FIELD", -32768, "INTEGER", 5, "INT", 2)

# --- identity and reference ---------------------------------------------------
field("ROW_TAG", "ROW TAG", 0, "INTEGER", 5, "UINT32", 2)
field("PROD_KEY", "PRODUCT KEY", 1, "INTEGER", 5, "UINT32", 2)
field("SHOW_TEXT", "SHOW TEXT", 3, "ALPHANUMERIC", 16, "ASCII_STRING", 16)
field("SHOW_TEMPLATE", "SHOW TEMPLATE", 2, "INTEGER", 3, "INT32", 2)
enum_field("VENUE_ID", "VENUE", 4, 3)
enum_field("PRIM_VENUE", "PRIMARY VENUE", 5, 3)
enum_field("LAST_VENUE", "LAST TRADE VENUE", 6, 3)
enum_field("QUOTE_CCY", "QUOTE CURRENCY", 15, 3)
enum_field("SETTLE_CCY", "SETTLEMENT CURRENCY", 16, 3)
enum_field("STRIKE_CCY", "STRIKE CURRENCY", 17, 3)
enum_field("BASE_CCY", "BASE CURRENCY", 18, 3)
enum_field("TERM_CCY", "TERM CURRENCY", 19, 3)
enum_field("INSTR_CLASS", "INSTRUMENT CLASS", 20, 10)
enum_field("MKT_STATE", "MARKET STATE", 21, 8)
enum_field("ISSUER_CTRY", "ISSUER COUNTRY", 22, 3)
enum_field("LISTING_CTRY", "LISTING COUNTRY", 23, 3)
enum_field("RISK_CTRY", "RISK COUNTRY", 24, 3)
enum_field("SECTOR_CODE", "SECTOR", 25, 12, wire="ENUM")
enum_field("SUB_SECTOR", "SUB SECTOR", 26, 16, wire="ENUM")
field("ISIN_CODE", "ISIN", 30, "ALPHANUMERIC", 12, "ASCII_STRING", 12)
field("LOCAL_CODE", "LOCAL CODE", 31, "ALPHANUMERIC", 12, "ASCII_STRING", 12)
field("ISSUER_NAME", "ISSUER NAME", 32, "ALPHANUMERIC", 40, "UTF8_STRING", 40)
field("INSTR_NAME", "INSTRUMENT NAME", 33, "ALPHANUMERIC", 40, "UTF8_STRING", 40)
field("LOCAL_NAME", "LOCAL LANGUAGE NAME", 34, "LONGALPHANUMERIC", 80, "OMTES_STRING", 80)
field("LOT_UNITS", "LOT UNITS", 35, "INTEGER", 10, "UINT64", 8)
field("TICK_SIZE", "TICK SIZE", 36, "PRICE", 17, "REAL", 7)
field("PX_MULT", "PRICE MULTIPLIER", 37, "NUMERIC", 12, "REAL32", 5)
field("LIST_DATE", "LISTING DATE", 38, "DATE", 11, "DATE", 4)
field("EXPIRY_DATE", "EXPIRY DATE", 39, "DATE", 11, "DATE", 4)

# --- quotes and trades --------------------------------------------------------
price("BUY_PX", "BUY PRICE", 40, ripple="BUY_PX_1")
price("BUY_PX_1", "BUY PRICE 1", 41, ripple="BUY_PX_2")
price("BUY_PX_2", "BUY PRICE 2", 42, ripple="BUY_PX_3")
price("BUY_PX_3", "BUY PRICE 3", 43)
price("SELL_PX", "SELL PRICE", 44, ripple="SELL_PX_1")
price("SELL_PX_1", "SELL PRICE 1", 45, ripple="SELL_PX_2")
price("SELL_PX_2", "SELL PRICE 2", 46, ripple="SELL_PX_3")
price("SELL_PX_3", "SELL PRICE 3", 47)
field("BUY_QTY", "BUY QUANTITY", 48, "NUMERIC", 15, "REAL64", 7)
field("SELL_QTY", "SELL QUANTITY", 49, "NUMERIC", 15, "REAL64", 7)
enum_field("BUY_TICK", "BUY TICK DIRECTION", 50, 1)
enum_field("SELL_TICK", "SELL TICK DIRECTION", 51, 1)
enum_field("DEAL_TICK", "DEAL TICK DIRECTION", 52, 1)
field("BUY_TIME", "BUY QUOTE TIME", 53, "TIME", 5, "TIME", 3)
field("SELL_TIME", "SELL QUOTE TIME", 54, "TIME", 5, "TIME", 3)
field("QUOTE_STAMP", "QUOTE TIMESTAMP", 55, "TIME_SECONDS", 8, "TIME", 5)
# The deal chain is written target first: each line ripples to the line
# just before it.
for n in range(10, 0, -1):
    ripple = "NULL" if n == 10 else "DEAL_PX_%d" % (n + 1)
    price("DEAL_PX_%d" % n, "DEAL PRICE %d" % n, 60 + n, ripple=ripple)
price("DEAL_PX", "LAST DEAL PRICE", 60, ripple="DEAL_PX_1")
for n in range(10, 0, -1):
    ripple = "NULL" if n == 10 else "DEAL_QTY_%d" % (n + 1)
    field("DEAL_QTY_%d" % n, "DEAL QUANTITY %d" % n, 80 + n, "NUMERIC", 15, "REAL64", 7,
          ripple=ripple)
field("DEAL_QTY", "LAST DEAL QUANTITY", 80, "NUMERIC", 15, "REAL64", 7, ripple="DEAL_QTY_1")
for n in range(1, 11):
    ripple = "NULL" if n == 10 else "DEAL_TIME_%d" % (n + 1)
    field("DEAL_TIME_%d" % n, "DEAL TIME %d" % n, 100 + n, "TIME", 5, "TIME", 3, ripple=ripple)
field("DEAL_TIME", "LAST DEAL TIME", 100, "TIME", 5, "TIME", 3, ripple="DEAL_TIME_1")
enum_field("DEAL_COND", "DEAL CONDITION", 111, 4)
enum_field("DEAL_COND_2", "DEAL CONDITION 2", 112, 4)
enum_field("QUOTE_COND", "QUOTE CONDITION", 113, 4)
enum_field("DEAL_SIDE", "AGGRESSOR SIDE", 114, 4)
enum_field("DEAL_KIND", "DEAL KIND", 115, 6)
field("DEAL_ID", "DEAL IDENTIFIER", 116, "ALPHANUMERIC", 20, "ASCII_STRING", 20)
field("DEAL_COUNT", "DEAL COUNT", 117, "INTEGER", 10, "UINT64", 8)
field("TURNOVER", "TURNOVER", 118, "NUMERIC", 17, "REAL64", 9)
field("VOL_ACC", "ACCUMULATED VOLUME", 119, "NUMERIC", 15, "REAL64", 9)
field("VWAP_PX", "VOLUME WEIGHTED PRICE", 120, "PRICE", 17, "REAL64", 7)

# --- session prices -----------------------------------------------------------
for i, (acr, dde) in enumerate([
        ("OPEN_PX", "OPEN PRICE"), ("HIGH_PX", "HIGH PRICE"), ("LOW_PX", "LOW PRICE"),
        ("CLOSE_PX", "CLOSE PRICE"), ("PREV_CLOSE", "PREVIOUS CLOSE"),
        ("SETTLE_PX", "SETTLEMENT PRICE"), ("PREV_SETTLE", "PREVIOUS SETTLEMENT"),
        ("REF_PX", "REFERENCE PRICE"), ("UPPER_LIMIT", "UPPER PRICE LIMIT"),
        ("LOWER_LIMIT", "LOWER PRICE LIMIT"), ("YEAR_HIGH", "52 WEEK HIGH"),
        ("YEAR_LOW", "52 WEEK LOW"), ("AUCTION_PX", "AUCTION PRICE"),
        ("INDIC_PX", "INDICATIVE PRICE"), ("MID_PX", "MID PRICE")]):
    price(acr, dde, 130 + i)
field("NET_CHNG", "NET CHANGE", 150, "PRICE", 17, "REAL64", 7)
field("PCT_CHNG", "PERCENT CHANGE", 151, "NUMERIC", 10, "REAL32", 5)
field("OPEN_TIME", "OPEN TIME", 152, "TIME", 5, "TIME", 3)
field("CLOSE_TIME", "CLOSE TIME", 153, "TIME", 5, "TIME", 3)
field("TRADE_DATE", "TRADE DATE", 154, "DATE", 11, "DATE", 4)
field("VALUE_DATE", "VALUE DATE", 155, "DATE", 11, "DATE", 4)
field("HIGH_TIME", "HIGH TIME", 156, "TIME_SECONDS", 8, "TIME", 5)
field("LOW_TIME", "LOW TIME", 157, "TIME_SECONDS", 8, "TIME", 5)
enum_field("HALT_REASON", "HALT REASON", 158, 6)
enum_field("AUCTION_KIND", "AUCTION KIND", 159, 6)

# --- daily history: a chain written in forward order ---------------------------
for n in range(1, 21):
    ripple = "NULL" if n == 20 else "CLS_PX_D%02d" % (n + 1)
    price("CLS_PX_D%02d" % n, "CLOSE DAY %d" % n, 200 + n, ripple=ripple)
for n in range(1, 21):
    ripple = "NULL" if n == 20 else "CLS_VOL_D%02d" % (n + 1)
    field("CLS_VOL_D%02d" % n, "VOLUME DAY %d" % n, 230 + n, "NUMERIC", 15, "REAL64", 9,
          ripple=ripple)
for n in range(1, 21):
    ripple = "NULL" if n == 20 else "CLS_DATE_D%02d" % (n + 1)
    field("CLS_DATE_D%02d" % n, "DATE DAY %d" % n, 260 + n, "DATE", 11, "DATE", 4, ripple=ripple)

# --- order book by level --------------------------------------------------------
for lvl in range(1, 11):
    base = 300 + (lvl - 1) * 6
    price("BUY_PX_L%02d" % lvl, "BUY PRICE LEVEL %d" % lvl, base)
    price("SELL_PX_L%02d" % lvl, "SELL PRICE LEVEL %d" % lvl, base + 1)
    field("BUY_QTY_L%02d" % lvl, "BUY QTY LEVEL %d" % lvl, base + 2, "NUMERIC", 15, "REAL64", 7)
    field("SELL_QTY_L%02d" % lvl, "SELL QTY LEVEL %d" % lvl, base + 3, "NUMERIC", 15, "REAL64", 7)
    field("BUY_ORD_L%02d" % lvl, "BUY ORDERS LEVEL %d" % lvl, base + 4, "INTEGER", 10, "UINT32", 4)
    field("SELL_ORD_L%02d" % lvl, "SELL ORDERS LEVEL %d" % lvl, base + 5, "INTEGER", 10, "UINT32",
          4)
enum_field("BOOK_STATE", "BOOK STATE", 370, 6)
enum_field("ORDER_SIDE", "ORDER SIDE", 371, 4)
enum_field("ORDER_KIND", "ORDER KIND", 372, 8)
enum_field("ORDER_LIFE", "ORDER LIFETIME", 373, 6)
field("ORDER_REF", "ORDER REFERENCE", 374, "ALPHANUMERIC", 24, "BUFFER", 24)
field("ORDER_PX", "ORDER PRICE", 375, "PRICE", 17, "REAL64", 7)
field("ORDER_QTY", "ORDER QUANTITY", 376, "NUMERIC", 15, "REAL64", 7)
field("BOOK_ENTRIES", "BOOK ENTRIES", 377, "NONE", 0, "MAP", 0)

# --- fixed income ----------------------------------------------------------------
tenors = ["ON", "TN", "1W", "2W", "1M", "2M", "3M", "6M", "9M", "1Y", "2Y", "3Y", "5Y", "7Y",
          "10Y", "15Y", "20Y", "30Y"]
for i, t in enumerate(tenors):
    field("YLD_%s" % t, "YIELD %s" % t, 400 + i, "NUMERIC", 10, "REAL64", 7)
    field("SPRD_%s" % t, "SPREAD %s" % t, 430 + i, "NUMERIC", 10, "REAL64", 7)
    field("DISC_%s" % t, "DISCOUNT FACTOR %s" % t, 460 + i, "NUMERIC", 14, "DOUBLE", 8)
field("CPN_RATE", "COUPON RATE", 490, "NUMERIC", 10, "REAL64", 7)
field("CPN_DATE", "NEXT COUPON DATE", 491, "DATE", 11, "DATE", 4)
field("MAT_DATE", "MATURITY DATE", 492, "DATE", 11, "DATE", 4)
enum_field("CPN_FREQ", "COUPON FREQUENCY", 493, 6)
enum_field("DAY_BASIS", "DAY COUNT BASIS", 494, 10)
enum_field("RATING_A", "RATING AGENCY A", 495, 4)
enum_field("RATING_B", "RATING AGENCY B", 496, 4)
enum_field("RATING_C", "RATING AGENCY C", 497, 4)
enum_field("SENIORITY", "SENIORITY", 498, 10)
field("ACCR_INT", "ACCRUED INTEREST", 499, "NUMERIC", 12, "REAL64", 7)
field("DURATION", "MODIFIED DURATION", 500, "NUMERIC", 10, "FLOAT", 4)
field("CONVEXITY", "CONVEXITY", 501, "NUMERIC", 10, "FLOAT", 4)
field("AMT_ISSUED", "AMOUNT ISSUED", 502, "NUMERIC", 20, "REAL64", 9)
field("AMT_OUTST", "AMOUNT OUTSTANDING", 503, "NUMERIC", 20, "REAL64", 9)

# --- derivatives -----------------------------------------------------------------
enum_field("OPT_RIGHT", "OPTION RIGHT", 520, 4)
enum_field("EXER_STYLE", "EXERCISE STYLE", 521, 8)
enum_field("SETTLE_KIND", "SETTLEMENT KIND", 522, 8)
field("STRIKE_PX", "STRIKE PRICE", 523, "PRICE", 17, "REAL64", 7)
field("UNDERLYING", "UNDERLYING CODE", 524, "ALPHANUMERIC", 20, "ASCII_STRING", 20)
field("OPEN_INT", "OPEN INTEREST", 525, "NUMERIC", 15, "REAL64", 9)
field("OPEN_INT_DT", "OPEN INTEREST DATE", 526, "DATE", 11, "DATE", 4)
for i, g in enumerate(["DELTA", "GAMMA", "VEGA", "THETA", "RHO", "IMPL_VOL", "HIST_VOL_20",
                       "HIST_VOL_60"]):
    field("GRK_%s" % g, "GREEK %s" % g.replace("_", " "), 530 + i, "NUMERIC", 12, "DOUBLE", 8)
field("CONTRACT_SZ", "CONTRACT SIZE", 540, "NUMERIC", 12, "REAL64", 7)
field("FIRST_NOTICE", "FIRST NOTICE DATE", 541, "DATE", 11, "DATE", 4)
field("LAST_TRADE_DT", "LAST TRADING DATE", 542, "DATE", 11, "DATE", 4)
enum_field("CONTRACT_MTH", "CONTRACT MONTH", 543, 3)

# --- news and text ---------------------------------------------------------------
field("HEADLINE", "NEWS HEADLINE", 600, "LONGALPHANUMERIC", 120, "UTF8_STRING", 120)
field("HEADLINE_2", "NEWS HEADLINE 2", 601, "LONGALPHANUMERIC", 120, "UTF8_STRING", 120)
field("STORY_ID", "STORY IDENTIFIER", 602, "ALPHANUMERIC", 32, "ASCII_STRING", 32)
enum_field("STORY_LANG", "STORY LANGUAGE", 603, 4)
enum_field("STORY_URGENCY", "STORY URGENCY", 604, 6)
field("STORY_TIME", "STORY TIME", 605, "TIME_SECONDS", 8, "TIME", 5)
field("STORY_DATE", "STORY DATE", 606, "DATE", 11, "DATE", 4)
field("STORY_CODES", "STORY CODES", 607, "NONE", 0, "ARRAY", 0)
field("STORY_BODY", "STORY BODY", 608, "BINARY", 255, "BUFFER", 0)
field("PAGE_ROW_01", "PAGE ROW 1", 610, "ALPHANUMERIC", 80, "ASCII_STRING", 80)
for n in range(2, 25):
    field("PAGE_ROW_%02d" % n, "PAGE ROW %d" % n, 609 + n, "ALPHANUMERIC", 80, "ASCII_STRING", 80)
field("PAGE_SEG", "PAGE SEGMENT", 640, "OPAQUETYPE", 255, "ANSI_PAGE", 0)

# --- reference rates and indices ---------------------------------------------------
for i, name in enumerate(["INDEX_LVL", "INDEX_HIGH", "INDEX_LOW", "INDEX_OPEN", "INDEX_CLOSE",
                          "INDEX_DIV", "INDEX_MCAP", "INDEX_PE", "INDEX_YLD", "INDEX_ADV",
                          "INDEX_DECL", "INDEX_UNCH"]):
    wire = "UINT64" if name in ("INDEX_ADV", "INDEX_DECL", "INDEX_UNCH") else "REAL64"
    ft = "INTEGER" if wire == "UINT64" else "NUMERIC"
    field(name, name.replace("_", " "), 700 + i, ft, 15, wire, 8)
enum_field("INDEX_FAMILY", "INDEX FAMILY", 712, 10)
for i, t in enumerate(["1W", "1M", "3M", "6M", "12M"]):
    field("FIX_RATE_%s" % t, "FIXING RATE %s" % t, 720 + i, "NUMERIC", 10, "REAL64", 7)
    field("FIX_TIME_%s" % t, "FIXING TIME %s" % t, 730 + i, "TIME", 20, "DATETIME", 7)
enum_field("FIX_SOURCE", "FIXING SOURCE", 740, 8)

# --- FX ------------------------------------------------------------------------------
for i, t in enumerate(["SPOT", "1W", "1M", "2M", "3M", "6M", "9M", "1Y"]):
    field("FWD_PTS_%s" % t, "FORWARD POINTS %s" % t, 800 + i, "NUMERIC", 10, "REAL64", 7)
    field("FWD_OUT_%s" % t, "OUTRIGHT %s" % t, 810 + i, "PRICE", 17, "REAL64", 7)
enum_field("FX_SRC_KIND", "FX SOURCE KIND", 820, 6)
enum_field("FX_QUOTE_BASIS", "FX QUOTE BASIS", 821, 4)
enum_field("SETTLE_DAYS", "SETTLEMENT DAYS", 822, 4)

# --- statistics with a mix of wire types ------------------------------------------------
for i in range(1, 21):
    wire = ["INT", "UINT", "REAL", "DOUBLE", "FLOAT"][i % 5]
    ft = "INTEGER" if wire in ("INT", "UINT") else "NUMERIC"
    wl = {"INT": 8, "UINT": 8, "REAL": 9, "DOUBLE": 8, "FLOAT": 4}[wire]
    field("STAT_%02d" % i, "STATISTIC %d" % i, 900 + i, ft, 15, wire, wl)

# --- status and service fields -----------------------------------------------------------
enum_field("FEED_STATUS", "FEED STATUS", 1000, 6)
enum_field("ITEM_CLASS", "ITEM CLASS", 1001, 6)
enum_field("DATA_GRADE", "DATA GRADE", 1002, 4)
enum_field("DELAY_KIND", "DELAY KIND", 1003, 6)
enum_field("PRICE_SRC", "PRICE SOURCE", 1004, 10)
enum_field("CORP_ACTION", "CORPORATE ACTION", 1005, 12)
enum_field("WEEKDAY", "WEEKDAY", 1006, 3)
enum_field("PERIOD_UNIT", "PERIOD UNIT", 1007, 6)
enum_field("LOCAL_SCRIPT", "LOCAL SCRIPT NAME", 1008, 8)
enum_field("UNIT_SYMBOL", "UNIT SYMBOL", 1009, 3)
field("SVC_QOS", "SERVICE QUALITY", 1010, "NONE", 0, "QOS", 0)
field("SVC_STATE", "SERVICE STATE", 1011, "NONE", 0, "STATUS", 0)
field("SVC_UPDATED", "SERVICE UPDATED", 1012, "TIME", 20, "DATE_TIME", 11)
field("SVC_CONFIG", "SERVICE CONFIG", 1013, "NONE", 0, "ELEMENT_LIST", 0)
field("SVC_HISTORY", "SERVICE HISTORY", 1014, "NONE", 0, "SERIES", 0)
field("SVC_FILTERS", "SERVICE FILTERS", 1015, "NONE", 0, "FILTER_LIST", 0)
field("SVC_ENTRIES", "SERVICE ENTRIES", 1016, "NONE", 0, "VECTOR", 0)
field("SVC_REPLY", "SERVICE REPLY", 1017, "NONE", 0, "MSG", 0)
field("SVC_EXTRA", "SERVICE EXTRA", 1018, "NONE", 0, "FIELD_LIST", 0)
field("SVC_NOTE", "SERVICE NOTE", 1019, "LONGALPHANUMERIC", 200, "UTF8_STRING", 200)

# --- a range of contributor quotes ----------------------------------------------------------
for n in range(1, 31):
    base = 1100 + (n - 1) * 3
    price("CTB_BUY_%02d" % n, "CONTRIBUTOR %d BUY" % n, base)
    price("CTB_SELL_%02d" % n, "CONTRIBUTOR %d SELL" % n, base + 1)
    field("CTB_NAME_%02d" % n, "CONTRIBUTOR %d NAME" % n, base + 2, "ALPHANUMERIC", 12,
          "ASCII_STRING", 12)

# --- high ids near the top of the range -------------------------------------------------------
field("EXT_RESERVED", "EXTENSION RESERVED", 32000, "BINARY", 64, "BUFFER", 64)
enum_field("EXT_KIND", "EXTENSION KIND", 32001, 6)
field("EXT_LAST", "LAST FIELD ID", 32767, "INTEGER", 5, "UINT32", 2)

# ---------------------------------------------------------------------------------------------
# Enumeration tables: (acronyms sharing the table, [(value, display, meaning)], hex displays?)
tables = []


def table(acrs, values, hex_display=False):
    for a in acrs:
        assert a in by_name and by_name[a][4] == "ENUMERATED", a
    tables.append((acrs, values, hex_display))


CCY = [(0, "   ", "no currency"), (36, "AUD", "Australian dollar"), (124, "CAD", "Canadian dollar"),
       (156, "CNY", "Yuan renminbi"), (208, "DKK", "Danish krone"), (344, "HKD", "Hong Kong dollar"),
       (356, "INR", "Indian rupee"), (392, "JPY", "Yen"), (410, "KRW", "Won"),
       (484, "MXN", "Mexican peso"), (554, "NZD", "New Zealand dollar"),
       (578, "NOK", "Norwegian krone"), (643, "RUB", "Russian ruble"), (702, "SGD", "Singapore dollar"),
       (710, "ZAR", "Rand"), (752, "SEK", "Swedish krona"), (756, "CHF", "Swiss franc"),
       (826, "GBP", "Pound sterling"), (840, "USD", "US dollar"), (949, "TRY", "Turkish lira"),
       (978, "EUR", "Euro"), (985, "PLN", "Zloty"), (986, "BRL", "Brazilian real")]
table(["QUOTE_CCY", "SETTLE_CCY", "STRIKE_CCY", "BASE_CCY", "TERM_CCY"], CCY)
VENUES = [(0, "   ", "unknown venue")] + [
    (i + 1, code, "venue %s" % code) for i, code in enumerate(
        ["NXA", "NXB", "OVX", "PLT", "KMX", "TRS", "BRV", "HLX", "QTX", "ZND", "MRK", "ALB", "CYR",
         "DUN", "ESK", "FJR", "GLN", "HMR", "IVR", "JST"])]
table(["VENUE_ID", "PRIM_VENUE", "LAST_VENUE"], VENUES)
CTRY = [(0, "   ", "none")] + [(i + 1, c, "country %s" % c) for i, c in enumerate(
    ["ARX", "BLR", "CAL", "DMR", "ESV", "FRN", "GAL", "HSP", "IRN", "JVN", "KAL", "LMB", "MRV",
     "NRD", "OST", "PLV", "QSR", "RUV", "SLV", "TRM"])]
table(["ISSUER_CTRY", "LISTING_CTRY", "RISK_CTRY"], CTRY)
TICK = [(0, " ", "no direction"), (1, "^", "up tick"), (2, "v", "down tick"), (3, "=", "unchanged")]
table(["BUY_TICK", "SELL_TICK", "DEAL_TICK"], TICK)
table(["INSTR_CLASS"], [(0, "NOT GIVEN", "class not given"), (1, "EQUITY", "shares"),
                        (2, "BOND", "debt"), (3, "FUTURE", "exchange future"),
                        (4, "OPTION", "exchange option"), (5, "FX SPOT", "currency spot"),
                        (6, "FX FORWARD", "currency forward"), (7, "INDEX", "index level"),
                        (8, "FUND", "collective investment"), (9, "WARRANT", "warrant"),
                        (10, "RATE", "reference rate"), (12, "COMMODITY", "physical goods")])
MKT = [(0, "UNKNOWN", ""), (1, "PRE-OPEN", "orders accepted, no matching"),
       (2, "OPEN", "continuous trading"), (3, "AUCTION", "call auction"),
       (4, "HALTED", "trading halted"), (5, "CLOSED", "session over"),
       (6, "POST-CLOSE", "late orders only"), (7, "SUSPENDED", "instrument suspended")]
table(["MKT_STATE"], MKT)
table(["BOOK_STATE"], [(0, "UNKNOWN", ""), (1, "FULL", "all levels"), (2, "PARTIAL", "top levels"),
                       (3, "STALE", "not refreshed"), (4, "CROSSED", "buy above sell"),
                       (5, "LOCKED", "buy equals sell")])
table(["SECTOR_CODE"], [(i, s, "") for i, s in enumerate(
    ["", "ENERGY", "MATERIALS", "INDUSTRIALS", "CONSUMER", "STAPLES", "HEALTH", "FINANCIALS",
     "TECHNOLOGY", "TELECOM", "UTILITIES", "REAL ESTATE"])])
table(["SUB_SECTOR"], [(i * 10, s, "") for i, s in enumerate(
    ["", "OIL AND GAS", "CHEMICALS", "METALS", "MACHINERY", "TRANSPORT", "AUTOS", "RETAIL",
     "FOOD", "PHARMA", "DEVICES", "BANKS", "INSURERS", "SOFTWARE", "HARDWARE", "CARRIERS",
     "POWER", "WATER", "REITS"])])
COND = [(0, "", "regular"), (1, "LT", "late trade"), (2, "OX", "out of sequence"),
        (3, "CX", "cancelled"), (4, "CR", "correction"), (5, "BL", "block"), (6, "DK", "dark"),
        (7, "AU", "auction print"), (8, "OD", "odd lot"), (9, "AV", "average price")]
table(["DEAL_COND", "DEAL_COND_2"], COND)
table(["QUOTE_COND"], [(0, "", "firm"), (1, "IND", "indicative"), (2, "FST", "fast market"),
                       (3, "CLS", "closing"), (4, "NAV", "not available")])
table(["DEAL_SIDE", "ORDER_SIDE"], [(0, "", "undisclosed"), (1, "BUY", "buyer initiated"),
                                    (2, "SELL", "seller initiated"), (3, "CROSS", "cross")])
table(["DEAL_KIND"], [(0, "NORMAL", ""), (1, "OTC", "off book"), (2, "SPREAD", "spread leg"),
                      (3, "SWAP", "swap leg"), (5, "NEGOT", "negotiated")])
table(["HALT_REASON"], [(0, "", "not halted"), (1, "NEWS", "news pending"),
                        (2, "VOLAT", "volatility"), (3, "ORDER", "order imbalance"),
                        (4, "TECH", "technical"), (5, "REGUL", "regulatory"),
                        (99, "OTHER", "any other reason")])
table(["AUCTION_KIND"], [(0, "", ""), (1, "OPENING", ""), (2, "CLOSING", ""),
                         (3, "INTRADAY", ""), (4, "REOPEN", ""), (5, "VOLAT", "")])
table(["ORDER_KIND"], [(0, "LIMIT", ""), (1, "MARKET", ""), (2, "STOP", ""),
                       (3, "STOP LIMIT", ""), (4, "ICEBERG", ""), (5, "PEGGED", "")])
table(["ORDER_LIFE"], [(0, "DAY", ""), (1, "GTC", "good till cancelled"),
                       (2, "IOC", "immediate or cancel"), (3, "FOK", "fill or kill"),
                       (4, "GTD", "good till date")])
table(["CPN_FREQ"], [(0, "NONE", "zero coupon"), (1, "ANNUAL", ""), (2, "SEMI", ""),
                     (4, "QUARTER", ""), (12, "MONTHLY", "")])
table(["DAY_BASIS"], [(0, "", ""), (1, "ACT/ACT", ""), (2, "ACT/360", ""), (3, "ACT/365", ""),
                      (4, "30/360", ""), (5, "30E/360", ""), (6, "BUS/252", "")])
RATING = [(i, r, "") for i, r in enumerate(
    ["NR", "AAA", "AA+", "AA", "AA-", "A+", "A", "A-", "BBB+", "BBB", "BBB-", "BB+", "BB", "BB-",
     "B+", "B", "B-", "CCC", "CC", "C", "D"])]
table(["RATING_A", "RATING_B", "RATING_C"], RATING)
table(["SENIORITY"], [(0, "", ""), (1, "SENIOR SEC", "senior secured"),
                      (2, "SENIOR", "senior unsecured"), (3, "SUBORD", "subordinated"),
                      (4, "JUNIOR", "junior subordinated")])
table(["OPT_RIGHT"], [(0, "", ""), (1, "CALL", ""), (2, "PUT", "")])
table(["EXER_STYLE"], [(0, "", ""), (1, "AMERICAN", ""), (2, "EUROPEAN", ""),
                       (3, "BERMUDAN", "")])
table(["SETTLE_KIND"], [(0, "", ""), (1, "CASH", ""), (2, "PHYSICAL", ""), (3, "ELECTION", "")])
MONTHS = [(0, "", "")] + [(i + 1, m, "") for i, m in enumerate(
    ["JAN", "FEB", "MAR", "APR", "MAY", "JUN", "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"])]
table(["CONTRACT_MTH"], MONTHS)
table(["STORY_LANG"], [(0, "", ""), (1, "EN", "English"), (2, "DE", "German"), (3, "FR", "French"),
                       (4, "ES", "Spanish"), (5, "JA", "Japanese"), (6, "ZH", "Chinese")])
table(["STORY_URGENCY"], [(0, "", ""), (1, "FLASH", ""), (2, "URGENT", ""), (3, "REGULAR", "")])
table(["INDEX_FAMILY"], [(0, "", ""), (1, "BROAD", ""), (2, "SECTOR", ""), (3, "SIZE", ""),
                         (4, "STYLE", ""), (5, "THEMATIC", "")])
table(["FIX_SOURCE"], [(0, "", ""), (1, "PANEL", "contributed panel"),
                       (2, "TRADES", "transaction based"), (3, "HYBRID", "")])
table(["FX_SRC_KIND", "PRICE_SRC"], [(0, "", ""), (1, "DEALER", ""), (2, "BROKER", ""),
                                     (3, "VENUE", ""), (4, "COMPOSITE", ""), (5, "EVALUATED", "")])
table(["FX_QUOTE_BASIS"], [(0, "", ""), (1, "DIRECT", ""), (2, "INDIRECT", "")])
table(["SETTLE_DAYS"], [(0, "T+0", ""), (1, "T+1", ""), (2, "T+2", ""), (3, "T+3", "")])
table(["FEED_STATUS"], [(0, "", ""), (1, "UP", ""), (2, "DOWN", ""), (3, "RECOVER", ""),
                        (4, "STALE", "")])
table(["ITEM_CLASS"], [(0, "", ""), (1, "QUOTE", ""), (2, "BOOK", ""), (3, "NEWS", ""),
                       (4, "REF", "")])
table(["DATA_GRADE"], [(0, "", ""), (1, "REAL", "real time"), (2, "DLY", "delayed"),
                       (3, "EOD", "end of day")])
table(["DELAY_KIND"], [(0, "", ""), (1, "15 MIN", ""), (2, "20 MIN", ""), (3, "30 MIN", ""),
                       (4, "1 HOUR", "")])
table(["CORP_ACTION"], [(0, "", ""), (1, "DIVIDEND", ""), (2, "SPLIT", ""),
                        (3, "RIGHTS", ""), (4, "MERGER", ""), (5, "SPINOFF", ""),
                        (6, "DELISTING", "")])
table(["WEEKDAY"], [(0, "SUN", ""), (1, "MON", ""), (2, "TUE", ""), (3, "WED", ""),
                    (4, "THU", ""), (5, "FRI", ""), (6, "SAT", "")])
table(["PERIOD_UNIT"], [(0, "", ""), (1, "DAY", ""), (2, "WEEK", ""), (3, "MONTH", ""),
                        (4, "YEAR", "")])
table(["EXT_KIND"], [(0, "", ""), (1, "PRIVATE", ""), (2, "PARTNER", ""), (3, "PUBLIC", "")])
table(["SYS_ORIGIN"], [(0, "", ""), (1, "FEED", ""), (2, "CACHE", ""), (3, "REPLAY", "")])
table(["SYS_SEVERITY"], [(0, "INFO", ""), (1, "NOTICE", ""), (2, "WARNING", ""), (3, "ERROR", ""),
                         (4, "FATAL", "")])
# Displays that are not plain text are written as hex of their bytes.
table(["LOCAL_SCRIPT"], [(0, "", "no local name"),
                         (1, "日本語".encode(), "Japanese"),
                         (2, "中文".encode(), "Chinese"),
                         (3, "한국어".encode(), "Korean"),
                         (4, "Ελληνικά".encode(), "Greek"),
                         (5, "Русский".encode(), "Russian")], hex_display=True)
table(["UNIT_SYMBOL"], [(0, "", ""), (1, "€".encode(), "euro sign"),
                        (2, "£".encode(), "pound sign"), (3, "¥".encode(), "yen sign"),
                        (4, "µs".encode(), "microseconds"), (5, "°C".encode(), "degrees")],
      hex_display=True)


def field_line(f):
    acr, dde, fid, ripple, ft, ln, enum_len, wire, wlen = f
    enum_part = "( %d )" % enum_len if enum_len is not None else ""
    dde_q = '"%s"' % dde
    return "%-16s %-26s %6d  %-16s %-17s %5d  %-7s %-13s %5d" % (
        acr, dde_q, fid, ripple, ft, ln, enum_part, wire, wlen)


def write_fields(path):
    with open(path, "w", newline="\n") as out:
        out.write("!\n! orvo sample field dictionary. Generated by make_sample_dictionary.py;\n")
        out.write("! the names are invented for the library's examples and tests.\n!\n")
        out.write("!tag Filename  orvo-fields.def\n")
        out.write("!tag Desc      orvo sample field definitions\n")
        out.write("!tag Type      1\n")
        out.write("!tag Version   3.2.1\n")
        out.write("!tag Build     0042\n")
        out.write("!tag Date      %s\n" % DATE)
        out.write("!tag DictionaryId 1\n!\n")
        out.write("!ACRONYM         DDE ACRONYM                   FID  RIPPLES TO       "
                  "FIELD TYPE        LENGTH  ENUM    OWF TYPE      OWF LEN\n")
        out.write("!-------         -----------                   ---  ----------       "
                  "----------        ------  ----    --------      -------\n!\n")
        for f in fields:
            out.write(field_line(f).rstrip() + "\n")


def display_text(display, hex_display):
    if hex_display:
        raw = display if isinstance(display, bytes) else display.encode()
        return "#%s#" % raw.hex().upper() if raw else '""'
    return '"%s"' % display


def write_enums(path):
    with open(path, "w", newline="\n") as out:
        out.write("!\n! orvo sample enum type file, for orvo-fields.def. Generated by\n")
        out.write("! make_sample_dictionary.py.\n!\n")
        out.write("!tag Filename    orvo-enums.def\n")
        out.write("!tag Desc        orvo sample enumerated values\n")
        out.write("!tag Type        2\n")
        out.write("!tag RT_Version  3.2.1\n")
        out.write("!tag DT_Version  18.7\n")
        out.write("!tag Date        %s\n" % DATE)
        out.write("!tag DictionaryId 1\n")
        for acrs, values, hex_display in tables:
            out.write("!\n! ACRONYM          FID\n! -------          ---\n!\n")
            for a in acrs:
                out.write("%-18s %6d\n" % (a, by_name[a][2]))
            out.write("!\n! VALUE      DISPLAY               MEANING\n"
                      "! -----      -------               -------\n!\n")
            for value, display, meaning in values:
                line = "  %5d      %-21s %s" % (value, display_text(display, hex_display), meaning)
                out.write(line.rstrip() + "\n")
                if meaning and len(meaning) > 18:
                    # Free text of the meaning column may run on, indented.
                    out.write("                                   (meaning continued)\n")


if __name__ == "__main__":
    write_fields(os.path.join(HERE, "orvo-fields.def"))
    write_enums(os.path.join(HERE, "orvo-enums.def"))
    print("%d field definitions, %d enumeration tables" % (len(fields), len(tables)))
