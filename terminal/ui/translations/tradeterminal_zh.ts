<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>BarChecks</name>
    <message>
        <source>%1 is a Saturday or Sunday: no trading day</source>
        <translation>%1 是周六或周日，不是交易日</translation>
    </message>
    <message>
        <source>a price is zero</source>
        <translation>有价格为零</translation>
    </message>
    <message>
        <source>the high is many times open and close: is its decimal point in the right place?</source>
        <translation>最高价是开盘价与收盘价的许多倍：小数点位置对吗？</translation>
    </message>
    <message>
        <source>the low is a fraction of open and close: is its decimal point in the right place?</source>
        <translation>最低价远低于开盘价与收盘价：小数点位置对吗？</translation>
    </message>
    <message>
        <source>prices are many times those of the bar before, or a fraction: are decimal points in the right place?</source>
        <translation>价格与前一根K线相差许多倍：小数点位置对吗？</translation>
    </message>
    <message>
        <source>the volumes only grow over the day: they are sums since its begin, not those of each minute</source>
        <translation>成交量在一天内只增不减：是自开盘起的累计，而不是每分钟的成交量</translation>
    </message>
    <message>
        <source>these are bars of weeks or months; the terminal makes those of days</source>
        <translation>这是周线或月线；终端会由日线自行合成</translation>
    </message>
    <message>
        <source>most previous closes are not the close of the day before: are the columns what their names say?</source>
        <translation>多数昨收价与前一日收盘价不符：各列与列名相符吗？</translation>
    </message>
    <message>
        <source>the columns of open and close look exchanged</source>
        <translation>开盘与收盘两列似乎颠倒了</translation>
    </message>
</context>
<context>
    <name>BarColumns</name>
    <message>
        <source>the columns &quot;%1&quot; and &quot;%2&quot; have the same meaning; delete one of them</source>
        <translation>“%1”与“%2”两列含义相同，请删去一列</translation>
    </message>
</context>
<context>
    <name>BarHeader</name>
    <message>
        <source>these are bars of weeks or months; the terminal makes those of days</source>
        <translation>这是周线或月线；终端会由日线自行合成</translation>
    </message>
    <message>
        <source>the first line is &quot;%1&quot;, and no line names the columns %2</source>
        <translation>首行是“%1”，没有一行写明各列 %2</translation>
    </message>
</context>
<context>
    <name>BarImport</name>
    <message>
        <source>%1: %2 of %3 days that are in %4, too, have a volume %5 times as large: is this one in shares (--volume shares), or was that one in lots? --replace replaces the file as a whole</source>
        <translation>%1：与 %4 共有的 %3 天中有 %2 天的成交量是那里的 %5 倍：本文件以股为单位吗（--volume shares），还是那里以手为单位？--replace 可整个替换那个文件</translation>
    </message>
    <message>
        <source>%1: %2 of %3 days that are in %4, too, have a volume %5 times as small: is this one in lots (--volume lots)? --replace replaces the file as a whole</source>
        <translation>%1：与 %4 共有的 %3 天中有 %2 天的成交量只有那里的 %5 分之一：本文件以手为单位吗（--volume lots）？--replace 可整个替换那个文件</translation>
    </message>
    <message>
        <source>%1: these are bars of %2, but the folder has %3 under this code; use another folder</source>
        <translation>%1：这是 %2 的K线，而文件夹中该代码是 %3；请用另一个文件夹</translation>
    </message>
    <message>
        <source>replaced as a whole</source>
        <translation>整个替换</translation>
    </message>
    <message>
        <source>new</source>
        <translation>新建</translation>
    </message>
    <message>
        <source>%1 days added, %2 replaced by the same, %3 by others</source>
        <translation>新增 %1 天，相同替换 %2 天，不同替换 %3 天</translation>
    </message>
    <message>
        <source>%1: the last bar is of %2, a day to come</source>
        <translation>%1：最后一根K线是 %2，尚未到来</translation>
    </message>
    <message>
        <source>%1 rows of days without trading are left out.</source>
        <translation>略去 %1 行无交易的日子。</translation>
    </message>
    <message>
        <source>%1 minutes after the close are left out.</source>
        <translation>略去收盘后的 %1 分钟。</translation>
    </message>
    <message>
        <source>Columns that are not used: %1.</source>
        <translation>未使用的列：%1。</translation>
    </message>
    <message>
        <source>%1: cannot be written: %2</source>
        <translation>%1：无法写入：%2</translation>
    </message>
    <message>
        <source>%1; --replace replaces this file</source>
        <translation>%1；--replace 可替换该文件</translation>
    </message>
    <message>
        <source>%1: %2 of %3 days that are in %4, too, have other prices: is one of both adjusted? --replace replaces the file as a whole</source>
        <translation>%1：与 %4 共有的 %3 天中有 %2 天价格不同：其中之一是复权的吗？--replace 可整个替换该文件</translation>
    </message>
    <message>
        <source>%1: cannot be removed: %2</source>
        <translation>%1：无法删除：%2</translation>
    </message>
    <message>
        <source>%1: cannot be read: %2</source>
        <translation>%1：无法读取：%2</translation>
    </message>
    <message>
        <source>stopped; nothing is written</source>
        <translation>已停止；什么都没有写入</translation>
    </message>
    <message>
        <source>%1: the file does not say which security it is of: name it with --code, e.g. --code 600519.SH</source>
        <translation>%1：文件没有写明是哪只证券：请用 --code 指明，如 --code 600519.SH</translation>
    </message>
    <message>
        <source>%1: nothing says on which market %2 is: say --code %2.SH or --code %2.SZ</source>
        <translation>%1：无法判断 %2 属于哪个市场：请指明 --code %2.SH 或 --code %2.SZ</translation>
    </message>
</context>
<context>
    <name>BarRows</name>
    <message>
        <source>the high is below the low</source>
        <translation>最高价低于最低价</translation>
    </message>
    <message>
        <source>the open is outside of low and high</source>
        <translation>开盘价不在最低价与最高价之间</translation>
    </message>
    <message>
        <source>the close is outside of low and high</source>
        <translation>收盘价不在最低价与最高价之间</translation>
    </message>
    <message>
        <source>the volume is negative</source>
        <translation>成交量为负</translation>
    </message>
    <message>
        <source>%1 fields, but there must be %2</source>
        <translation>有 %1 个字段，应有 %2 个</translation>
    </message>
    <message>
        <source>there is no column for the day; call it &quot;date&quot;, e.g. 20240131 or 2024-01-31</source>
        <translation>没有日期列；列名请用“date”，如 20240131 或 2024-01-31</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a date: eight digits, or year, month and day apart</source>
        <translation>“%1”不是日期：应为八位数字，或年、月、日分开</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a time: hhmm or hh:mm, with or without a date</source>
        <translation>“%1”不是时间：应为 hhmm 或 hh:mm，可带日期</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a date of the form %2</source>
        <translation>“%1”不是 %2 形式的日期</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a time of the form %2</source>
        <translation>“%1”不是 %2 形式的时间</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is another day than %2</source>
        <translation>“%1”与 %2 不是同一天</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number</source>
        <translation>“%1”不是数字</translation>
    </message>
    <message>
        <source>, in column %1</source>
        <translation>，在“%1”列</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no security of Shanghai or Shenzhen: six digits, with or without SH or SZ</source>
        <translation>“%1”不是沪深证券代码：应为六位数字，可带 SH 或 SZ</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is another security than the one before, %2; a file has one</source>
        <translation>“%1”与前面的证券 %2 不同；一个文件只能有一只证券</translation>
    </message>
    <message>
        <source>raw and adjusted prices are mixed</source>
        <translation>复权与不复权的价格混在一起</translation>
    </message>
</context>
<context>
    <name>BarSheet</name>
    <message>
        <source>the columns %1 are missing</source>
        <translation>缺少列 %1</translation>
    </message>
    <message>
        <source>%1 is not earlier than the row before</source>
        <translation>%1 不早于前一行</translation>
    </message>
    <message>
        <source>%1 is not later than the row before</source>
        <translation>%1 不晚于前一行</translation>
    </message>
    <message>
        <source>the time %1 is outside of the trading hours</source>
        <translation>时间 %1 不在交易时段内</translation>
    </message>
    <message>
        <source>no bar is of the trading hours</source>
        <translation>没有交易时段内的K线</translation>
    </message>
    <message>
        <source>nothing says which day these times are of: name it with --day, e.g. --day %1</source>
        <translation>只有时间，没有写明是哪一天：请用 --day 指明，如 --day %1</translation>
    </message>
    <message>
        <source>nothing says which day these times are of, nor which security: name them with --day and --code, e.g. --day %1 --code %2</source>
        <translation>只有时间，没有写明是哪一天、哪只证券：请用 --day 和 --code 指明，如 --day %1 --code %2</translation>
    </message>
    <message>
        <source>nothing says whether the volume is in shares or in lots: import the file with --volume shares or --volume lots</source>
        <translation>无法判断成交量的单位是股还是手：请用 --volume shares 或 --volume lots 导入该文件</translation>
    </message>
    <message>
        <source>amount ÷ volume is far from the prices: is a decimal point in the wrong place?</source>
        <translation>成交额÷成交量与价格相差太大：小数点位置对吗？</translation>
    </message>
    <message>
        <source>the volume is said to be in %1, but amount ÷ volume is no such price</source>
        <translation>成交量单位写作 %1，但成交额÷成交量不是这样的价格</translation>
    </message>
    <message>
        <source>the header says that the volume is in %1</source>
        <translation>表头写明成交量单位是 %1</translation>
    </message>
    <message>
        <source>the volume, in %1, comes to more shares than there are</source>
        <translation>以 %1 计的成交量超过了现有的股数</translation>
    </message>
    <message>
        <source>the volume, in %1, is no whole number of shares</source>
        <translation>成交量（单位 %1）不是整数股</translation>
    </message>
    <message>
        <source>these are bars of %1, not of %2</source>
        <translation>这是 %1 的K线，不是 %2 的</translation>
    </message>
    <message>
        <source>; %1 more lines have a problem</source>
        <translation>；另有 %1 行有问题</translation>
    </message>
    <message>
        <source>this is no text in UTF-8, UTF-16 or GB18030; save a workbook as CSV</source>
        <translation>不是 UTF-8、UTF-16 或 GB18030 文本；工作簿请另存为 CSV</translation>
    </message>
    <message>
        <source>%1: holds no bars</source>
        <translation>%1：没有行情数据</translation>
    </message>
</context>
<context>
    <name>BarsCommand</name>
    <message>
        <source>bars import: takes files of bars of days or minutes, whatever their columns are called, into a data folder. Shows them first; writes with --yes, or when you say so.</source>
        <translation>bars import：把日线或分钟线文件（不论列名怎么写）收入数据文件夹。先显示内容；加 --yes 或您同意后才写入。</translation>
    </message>
    <message>
        <source>Files with bars of one security each.</source>
        <translation>K线文件，每个文件一只证券。</translation>
    </message>
    <message>
        <source>Data folder to write into; made if it is not there.</source>
        <translation>写入的数据文件夹；没有则新建。</translation>
    </message>
    <message>
        <source>Security of a file that does not name it, e.g. 600519.SH.</source>
        <translation>文件未写明的证券，如 600519.SH。</translation>
    </message>
    <message>
        <source>Name of the security.</source>
        <translation>证券名称。</translation>
    </message>
    <message>
        <source>Unit of a volume that nothing tells: shares or lots.</source>
        <translation>无从判断的成交量单位：shares（股）或 lots（手）。</translation>
    </message>
    <message>
        <source>Day of minutes that have none.</source>
        <translation>没有日期的分钟线的日期。</translation>
    </message>
    <message>
        <source>Replaces a file in the folder as a whole; else its other days stay.</source>
        <translation>整个替换文件夹中的文件；否则保留其余日子。</translation>
    </message>
    <message>
        <source>Compares the bars with the trades of this ledger.</source>
        <translation>与该账本的成交对照。</translation>
    </message>
    <message>
        <source>Program of the trading module, which reads the ledger.</source>
        <translation>读取账本的交易模块程序。</translation>
    </message>
    <message>
        <source>lots of %1</source>
        <translation>手（每手 %1）</translation>
    </message>
    <message>
        <source>zh or en.</source>
        <translation>zh 或 en。</translation>
    </message>
    <message>
        <source>Writes without asking.</source>
        <translation>不询问，直接写入。</translation>
    </message>
    <message>
        <source>--code must be six digits, with .SH or .SZ after them: 600519.SH</source>
        <translation>--code 应为六位数字，后加 .SH 或 .SZ：600519.SH</translation>
    </message>
    <message>
        <source>--volume must be shares or lots</source>
        <translation>--volume 应为 shares 或 lots</translation>
    </message>
    <message>
        <source>--day must be a date of the form yyyymmdd</source>
        <translation>--day 应为 yyyymmdd 形式的日期</translation>
    </message>
    <message>
        <source>volume in %1, as files of this form have it</source>
        <translation>成交量单位 %1，这种格式的文件如此</translation>
    </message>
    <message>
        <source>volume in %1, as the header says</source>
        <translation>成交量单位 %1，表头写明</translation>
    </message>
    <message>
        <source>volume in %1, as amount ÷ price says</source>
        <translation>成交量单位 %1，由成交额÷价格得知</translation>
    </message>
    <message>
        <source>volume in %1, as you say</source>
        <translation>成交量单位 %1，由您指定</translation>
    </message>
    <message>
        <source>%1 bars of minutes, %2 to %3</source>
        <translation>%1 根分钟线，%2 至 %3</translation>
    </message>
    <message>
        <source>%1 bars of days, %2 to %3</source>
        <translation>%1 根日线，%2 至 %3</translation>
    </message>
    <message>
        <source>  -&gt; and %1 more files</source>
        <translation>  -&gt; 另有 %1 个文件</translation>
    </message>
    <message>
        <source>Write this? [y/N] </source>
        <translation>写入吗？[y/N] </translation>
    </message>
    <message>
        <source>Nothing is written: --data DIR names the folder.</source>
        <translation>未写入：请用 --data DIR 指定文件夹。</translation>
    </message>
    <message>
        <source>Nothing is written: --yes writes.</source>
        <translation>未写入：加 --yes 即写入。</translation>
    </message>
    <message>
        <source>Written. See the chart: tradeterminal --data %1</source>
        <translation>已写入。查看图表：tradeterminal --data %1</translation>
    </message>
    <message>
        <source>Nothing is written: %1 of %2 files are refused.</source>
        <translation>未写入：%2 个文件中有 %1 个被拒绝。</translation>
    </message>
    <message>
        <source>bars wants: import FILE...</source>
        <translation>bars 的用法：import FILE...</translation>
    </message>
    <message>
        <source>Speaks with a program: see docs/terminal.md.</source>
        <translation>与程序对话：见 docs/terminal.md。</translation>
    </message>
</context>
<context>
    <name>FillCheck</name>
    <message>
        <source>%1 of %2 trades lie outside of their day&apos;s prices, first %3: %4, but the day had %5 to %6. Are the bars adjusted, or of another security?</source>
        <translation>%2 笔成交中有 %1 笔在当日价格之外，首笔 %3：%4，而当日为 %5 至 %6。K线是复权的，还是另一只证券的？</translation>
    </message>
    <message>
        <source>%1 trades are larger than their day&apos;s volume, first %2: %3 shares of %4. Is the volume in lots?</source>
        <translation>%1 笔成交大于当日成交量，首笔 %2：%3 股，当日仅 %4。成交量的单位是手吗？</translation>
    </message>
    <message>
        <source>%1 trades are on days without a bar, first %2. Are these bars of another security?</source>
        <translation>%1 笔成交所在的日子没有K线，首笔 %2。这是另一只证券的K线吗？</translation>
    </message>
    <message>
        <source>The ledger has no trades of this security.</source>
        <translation>账本中没有该证券的成交。</translation>
    </message>
    <message>
        <source>All %1 trades of the ledger are before or after these bars; none is compared.</source>
        <translation>账本中的 %1 笔成交都在这些K线之前或之后，未作对照。</translation>
    </message>
    <message>
        <source>%1 trades compared, all within their bars.</source>
        <translation>对照了 %1 笔成交，均在K线之内。</translation>
    </message>
</context>
<context>
    <name>LedgerAdvice</name>
    <message>
        <source>The file is no ledger or is damaged: name another one with --ledger, or bring a copy of it back.</source>
        <translation>该文件不是账本或已损坏：请用 --ledger 指定另一个，或恢复其备份。</translation>
    </message>
    <message>
        <source>See whether the folder of the ledger is there and may be written to.</source>
        <translation>请检查账本所在文件夹是否存在、是否可写。</translation>
    </message>
    <message>
        <source>See whether the ledger and its folder may be written to.</source>
        <translation>请检查账本及其文件夹是否可写。</translation>
    </message>
    <message>
        <source>Make room on the disk of the ledger.</source>
        <translation>请在账本所在磁盘上腾出空间。</translation>
    </message>
    <message>
        <source>See whether the disk of the ledger is full or broken.</source>
        <translation>请检查账本所在磁盘是否已满或损坏。</translation>
    </message>
    <message>
        <source>See whether the ledger's database server runs and can be reached.</source>
        <translation>请检查账本的数据库服务器是否在运行、能否连接。</translation>
    </message>
</context>
<context>
    <name>BarFile</name>
    <message>
        <source>%1: holds bars of days, not of minutes</source>
        <translation>%1：是日线，不是分钟线</translation>
    </message>
    <message>
        <source>%1: holds bars of minutes, not of days</source>
        <translation>%1：是分钟线，不是日线</translation>
    </message>
    <message>
        <source>%1: cannot be read: %2</source>
        <translation>%1：无法读取：%2</translation>
    </message>
</context>
<context>
    <name>ChartPeriod</name>
    <message>
        <source>Day</source>
        <translation>日线</translation>
    </message>
    <message>
        <source>Week</source>
        <translation>周线</translation>
    </message>
    <message>
        <source>Month</source>
        <translation>月线</translation>
    </message>
    <message>
        <source>Minute</source>
        <translation>分时</translation>
    </message>
</context>
<context>
    <name>ChartSummary</name>
    <message>
        <source>buys %1</source>
        <translation>买入 %1</translation>
    </message>
    <message>
        <source>sells %1</source>
        <translation>卖出 %1</translation>
    </message>
    <message>
        <source>both %1</source>
        <translation>买卖 %1</translation>
    </message>
    <message>
        <source>buy orders %1</source>
        <translation>买入委托 %1</translation>
    </message>
    <message>
        <source>sell orders %1</source>
        <translation>卖出委托 %1</translation>
    </message>
    <message>
        <source>%1 to %2, %3 bars</source>
        <translation>%1 至 %2，%3 根</translation>
    </message>
    <message>
        <source>last %1: close %2, change %3</source>
        <translation>最新 %1：收 %2，涨跌 %3</translation>
    </message>
</context>
<context>
    <name>CsvFile</name>
    <message>
        <source>the first line is &quot;%1&quot;, but must be &quot;%2&quot;</source>
        <translation>首行是“%1”，应为“%2”</translation>
    </message>
    <message>
        <source>%1 fields, but there must be %2</source>
        <translation>有 %1 个字段，应有 %2 个</translation>
    </message>
    <message>
        <source>%1: cannot be read: %2</source>
        <translation>%1：无法读取：%2</translation>
    </message>
</context>
<context>
    <name>DataFolder</name>
    <message>
        <source>%1: there is no such folder</source>
        <translation>%1：没有此文件夹</translation>
    </message>
    <message>
        <source>there is no security %1; known are: %2</source>
        <translation>没有证券 %1；已有：%2</translation>
    </message>
    <message>
        <source>%1: there are no minute bars of %2</source>
        <translation>%1：没有 %2 的分时数据</translation>
    </message>
    <message>
        <source>%1: its prices are adjusted already, so they are shown as they are</source>
        <translation>%1：其中的价格已经复权，因此原样显示</translation>
    </message>
    <message>
        <source>%1: there are no bars before %2</source>
        <translation>%1 在 %2 之前没有行情</translation>
    </message>
</context>
<context>
    <name>LedgerFills</name>
    <message>
        <source>it took too long, or was stopped</source>
        <translation>用时过长，或已被停止</translation>
    </message>
    <message>
        <source>the trades of ledger %1 could not be read: %2</source>
        <translation>无法读取账本 %1 的成交：%2</translation>
    </message>
    <message>
        <source>there is no such file</source>
        <translation>没有这个文件</translation>
    </message>
</context>
<context>
    <name>OrderDraft</name>
    <message>
        <source>The trading module does not answer.</source>
        <translation>交易模块没有应答。</translation>
    </message>
    <message>
        <source>The price is beyond the day's limits %1 and %2.</source>
        <translation>价格超出当日跌停 %1 至涨停 %2。</translation>
    </message>
    <message>
        <source>The quantity must be a multiple of %1.</source>
        <translation>数量须为 %1 的整数倍。</translation>
    </message>
    <message>
        <source>Only %1 shares may be sold.</source>
        <translation>最多可卖 %1 股。</translation>
    </message>
    <message>
        <source>There is not enough cash available.</source>
        <translation>可用资金不足。</translation>
    </message>
    <message>
        <source>The account can only be read.</source>
        <translation>账户只读，不能下单。</translation>
    </message>
    <message>
        <source>There is no price yet.</source>
        <translation>尚无价格。</translation>
    </message>
    <message>
        <source>The trading module on this bus serves another account.</source>
        <translation>这条总线上的交易模块服务的是另一个账户。</translation>
    </message>
    <message>
        <source>The price must be a multiple of %1.</source>
        <translation>价格须为 %1 的整数倍。</translation>
    </message>
    <message>
        <source>The quantity must be at least %1.</source>
        <translation>数量至少须为 %1。</translation>
    </message>
    <message>
        <source>The quantity must be at most %1.</source>
        <translation>数量最多为 %1。</translation>
    </message>
</context>
<context>
    <name>OverlayKind</name>
    <message>
        <source>Cost</source>
        <translation>持仓成本</translation>
    </message>
    <message>
        <source>Trades</source>
        <translation>买卖点</translation>
    </message>
    <message>
        <source>Orders</source>
        <translation>委托</translation>
    </message>
    <message>
        <source>Combined cost</source>
        <translation>综合成本</translation>
    </message>
    <message>
        <source>Combined trades</source>
        <translation>综合买卖</translation>
    </message>
</context>
<context>
    <name>OverlayLibrary</name>
    <message>
        <source>%1: cannot be loaded as overlay library: %2</source>
        <translation>%1：无法作为叠加库加载：%2</translation>
    </message>
    <message>
        <source>%1: is no overlay library: %2</source>
        <translation>%1：不是叠加库：%2</translation>
    </message>
</context>
<context>
    <name>Picture</name>
    <message>
        <source>%1: cannot be written: %2</source>
        <translation>%1：无法写入：%2</translation>
    </message>
</context>
<context>
    <name>SecurityList</name>
    <message>
        <source>&quot;%1&quot; is not a security code</source>
        <translation>“%1”不是证券代码</translation>
    </message>
    <message>
        <source>the code %1 stands here a second time</source>
        <translation>代码 %1 重复出现</translation>
    </message>
    <message>
        <source>the market &quot;%1&quot; is neither SH nor SZ</source>
        <translation>市场“%1”既不是 SH 也不是 SZ</translation>
    </message>
    <message>
        <source>the name is missing</source>
        <translation>缺少名称</translation>
    </message>
    <message>
        <source>%1: names no security</source>
        <translation>%1：没有证券</translation>
    </message>
</context>
<context>
    <name>Terminal::AnswerWatch</name>
    <message>
        <source>the answer to %1</source>
        <translation>%1 的应答</translation>
    </message>
    <message>
        <source>the drawing of %1</source>
        <translation>%1 的绘制</translation>
    </message>
</context>
<context>
    <name>Terminal::ChartBar</name>
    <message>
        <source>Security</source>
        <translation>证券</translation>
    </message>
    <message>
        <source>Day</source>
        <translation>日线</translation>
    </message>
    <message>
        <source>Chart</source>
        <translation>图表</translation>
    </message>
    <message>
        <source>Shows the chart so (%1)</source>
        <translation>切换到这种图（%1）</translation>
    </message>
    <message>
        <source>Type a part of the code or name, or the first letters of its syllables (Ctrl+L)</source>
        <translation>输入代码或名称的一部分，或拼音首字母（Ctrl+L）</translation>
    </message>
    <message>
        <source>The recorded day that the minutes are of</source>
        <translation>分时图所属的记录日</translation>
    </message>
    <message>
        <source>Hide amounts</source>
        <translation>隐藏金额</translation>
    </message>
    <message>
        <source>Shows no figure of the account, so that others may look on</source>
        <translation>不显示账户的任何数字，旁人可以一起看</translation>
    </message>
    <message>
        <source>%1, replayed</source>
        <translation>%1 回放</translation>
    </message>
</context>
<context>
    <name>Terminal::ChartView</name>
    <message>
        <source>Volume, highest %1</source>
        <translation>成交量  最高 %1</translation>
    </message>
</context>
<context>
    <name>Terminal::MainWindow</name>
    <message>
        <source>Export chart</source>
        <translation>导出图表</translation>
    </message>
    <message>
        <source>The overlay library does not know the overlay &quot;%1&quot;.</source>
        <translation>叠加库不支持“%1”。</translation>
    </message>
    <message>
        <source>PNG pictures (*.png)</source>
        <translation>PNG 图片 (*.png)</translation>
    </message>
    <message>
        <source>Written to %1</source>
        <translation>已保存到 %1</translation>
    </message>
    <message>
        <source>%1 (paper)</source>
        <translation>%1（模拟）</translation>
    </message>
    <message>
        <source>PRACTICE: %1. The recorded day %2, with an account of its own: nothing here reaches yours.</source>
        <translation>练习：%1。历史交易日 %2，使用单独的账户：这里的一切都不会进入您的账户。</translation>
    </message>
    <message>
        <source>Practice: %1</source>
        <translation>练习：%1</translation>
    </message>
    <message>
        <source>The holidays of this year are not known: it may be one.</source>
        <translation>今年的节假日未知：今天也可能休市。</translation>
    </message>
    <message>
        <source>Practised day: %1</source>
        <translation>练习日：%1</translation>
    </message>
</context>
<context>
    <name>Terminal::OrderTicket</name>
    <message>
        <source>Order ticket</source>
        <translation>下单</translation>
    </message>
    <message>
        <source>Price</source>
        <translation>价格</translation>
    </message>
    <message>
        <source>Quantity in shares</source>
        <translation>数量（股）</translation>
    </message>
    <message>
        <source>Up and down move by a lot of %1 shares</source>
        <translation>上下键每次一手（%1 股）</translation>
    </message>
    <message>
        <source>Amount without fees</source>
        <translation>金额（不含费用）</translation>
    </message>
    <message>
        <source>Enter sends, Escape goes back to the chart</source>
        <translation>回车发送，Esc 回到图表</translation>
    </message>
    <message>
        <source>Limits %1 – %2</source>
        <translation>跌停 %1 – 涨停 %2</translation>
    </message>
    <message>
        <source>Quantity: lots %1</source>
        <translation>数量：%1 手</translation>
    </message>
    <message>
        <source>At most %1</source>
        <translation>最多 %1 股</translation>
    </message>
    <message>
        <source>Account %1</source>
        <translation>账户 %1</translation>
    </message>
    <message>
        <source>Up and down move by %1; a click on the chart takes its price</source>
        <translation>上下键每次 %1；在图上点击即取该价格</translation>
    </message>
</context>
<context>
    <name>Terminal::OrdersPanel</name>
    <message>
        <source>Positions</source>
        <translation>持仓</translation>
    </message>
    <message>
        <source>Positions · cash %1, available %2</source>
        <translation>持仓 · 资金 %1，可用 %2</translation>
    </message>
    <message>
        <source>Today's orders</source>
        <translation>当日委托</translation>
    </message>
    <message>
        <source>Orders of %1</source>
        <translation>%1 的委托</translation>
    </message>
    <message>
        <source>%1 · no answer from the trading module</source>
        <translation>%1 · 交易模块没有应答</translation>
    </message>
    <message>
        <source>%1 · cost: %2</source>
        <translation>%1 · 成本：%2</translation>
    </message>
    <message>
        <source>%1 · at the replayed quote</source>
        <translation>%1 · 按回放行情计价</translation>
    </message>
    <message>
        <source>%1 · refused: %2</source>
        <translation>%1 · 被拒绝：%2</translation>
    </message>
    <message>
        <source>Positions · refused: %1</source>
        <translation>持仓 · 被拒绝：%1</translation>
    </message>
    <message>
        <source>Working orders</source>
        <translation>挂单</translation>
    </message>
</context>
<context>
    <name>Terminal::ReadoutBar</name>
    <message>
        <source>%1 %2, %3, %4: open %5, high %6, low %7, close %8, change %9</source>
        <translation>%1 %2，%3，%4：开 %5，高 %6，低 %7，收 %8，涨跌 %9</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>开</translation>
    </message>
    <message>
        <source>High</source>
        <translation>高</translation>
    </message>
    <message>
        <source>Low</source>
        <translation>低</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>收</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>涨跌</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>量</translation>
    </message>
</context>
<context>
    <name>Terminal::ReplayBar</name>
    <message>
        <source>Replay</source>
        <translation>回放</translation>
    </message>
    <message>
        <source>Play the shown day as today, or end it</source>
        <translation>把所示交易日当作今天回放，或结束回放</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>播放</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>暂停</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>单步</translation>
    </message>
    <message>
        <source>One minute on</source>
        <translation>前进一分钟</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>重来</translation>
    </message>
    <message>
        <source>Begin the day again</source>
        <translation>从开盘重新开始</translation>
    </message>
    <message>
        <source>Slower</source>
        <translation>减速</translation>
    </message>
    <message>
        <source>Faster</source>
        <translation>加速</translation>
    </message>
    <message>
        <source>Speed</source>
        <translation>速度</translation>
    </message>
    <message>
        <source>How many times as fast as on the day</source>
        <translation>相对实际行情的倍速</translation>
    </message>
    <message>
        <source>Time of the replayed day</source>
        <translation>回放时刻</translation>
    </message>
    <message>
        <source>The recorded minute that was played last</source>
        <translation>最近放出的一分钟（实际日期）</translation>
    </message>
    <message>
        <source>Drag to the right to play up to a minute at once</source>
        <translation>向右拖动，直接放到某一分钟</translation>
    </message>
</context>
<context>
    <name>Terminal::Snapshot</name>
    <message>
        <source>No picture was written: after %1 s these are missing: %2.</source>
        <translation>未生成图片：%1 秒后仍缺少：%2。</translation>
    </message>
    <message>
        <source>list of orders and positions</source>
        <translation>委托与持仓列表</translation>
    </message>
    <message>
        <source>No picture was written: %1</source>
        <translation>未生成图片：%1</translation>
    </message>
    <message>
        <source>list of results</source>
        <translation>盈亏统计</translation>
    </message>
    <message>
        <source>list of trades</source>
        <translation>成交列表</translation>
    </message>
</context>
<context>
    <name>Terminal::TerminalProgram</name>
    <message>
        <source>trading module that answers on the bus</source>
        <translation>总线上应答的交易模块</translation>
    </message>
    <message>
        <source>An order of the replay was not taken: %1</source>
        <translation>回放中的委托未被接受：%1</translation>
    </message>
    <message>
        <source>The trading module does not answer. The replay waits for it; Space plays without it.</source>
        <translation>交易模块没有应答，回放正在等待；按空格键可不经交易模块回放。</translation>
    </message>
    <message>
        <source>It is past midnight in Shanghai: the replay's today is over. End the replay and begin it again.</source>
        <translation>上海时间已过午夜，回放所当作的“今天”已结束。请结束回放后重新开始。</translation>
    </message>
    <message>
        <source>There are no bars of these securities yet: drop files of them here, too.</source>
        <translation>这些证券还没有K线：请把K线文件也拖进来。</translation>
    </message>
    <message>
        <source>There is no ledger %1; &quot;trademodule --ledger %1 import FILE&quot; makes one of a statement.</source>
        <translation>没有账本 %1；“trademodule --ledger %1 import 文件”由对账单建立。</translation>
    </message>
    <message>
        <source>There is no ledger %1 yet: a new account is made there.</source>
        <translation>还没有账本 %1：将在那里新建账户。</translation>
    </message>
    <message>
        <source>Practice</source>
        <translation>练习</translation>
    </message>
    <message>
        <source>Begin the practice &quot;%1&quot; again from nothing? Its orders and trades go.</source>
        <translation>让练习“%1”从头重新开始？其中的委托和成交都会清除。</translation>
    </message>
    <message>
        <source>Begin again</source>
        <translation>重新开始</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>保留</translation>
    </message>
    <message>
        <source>This practice is a ledger that the command line names: begin another with trademodule practice.</source>
        <translation>这次练习用的是命令行指定的账本：请用 trademodule practice 另行开始一个。</translation>
    </message>
    <message>
        <source>Orders of before that may still be dealt: %1 (F3 lists them)</source>
        <translation>之前留下、仍可能成交的委托：%1 笔（F3 查看）</translation>
    </message>
    <message>
        <source>Orders that may still be dealt, which leaving does not cancel: %1</source>
        <translation>仍可能成交的委托（退出不会撤单）：%1 笔</translation>
    </message>
</context>
<context>
    <name>Terminal::TradeDocks</name>
    <message>
        <source>Order ticket</source>
        <translation>下单</translation>
    </message>
    <message>
        <source>Orders and positions</source>
        <translation>委托与持仓</translation>
    </message>
    <message>
        <source>Order ticket: buy, sell</source>
        <translation>下单：买入、卖出</translation>
    </message>
    <message>
        <source>Ask before an order is sent</source>
        <translation>下单前询问</translation>
    </message>
    <message>
        <source>Do not ask again (menu View asks again)</source>
        <translation>不再询问（可在“视图”菜单中恢复）</translation>
    </message>
    <message>
        <source>The account is not told: %1</source>
        <translation>无法得知账户情况：%1</translation>
    </message>
</context>
<context>
    <name>Terminal::TradeModuleProcess</name>
    <message>
        <source>The trading module has ended (exit code %1) and is started again.</source>
        <translation>交易模块已退出（退出码 %1），正在重新启动。</translation>
    </message>
    <message>
        <source>The trading module did not answer any more; another one is started in its place.</source>
        <translation>交易模块不再应答，正在另行启动一个。</translation>
    </message>
    <message>
        <source>The trading module has ended and is started again: %1</source>
        <translation>交易模块已退出，正在重新启动：%1</translation>
    </message>
    <message>
        <source>The trading module %1 cannot be started: %2</source>
        <translation>交易模块 %1 无法启动：%2</translation>
    </message>
    <message>
        <source>The program of the trading module, %1, is not there: install it, or name it with --module.</source>
        <translation>找不到交易模块程序 %1：请安装它，或用 --module 指定。</translation>
    </message>
    <message>
        <source>The file %1 is no program that may be run: name that of the trading module with --module.</source>
        <translation>文件 %1 不是可运行的程序：请用 --module 指定交易模块程序。</translation>
    </message>
</context>
<context>
    <name>Terminal::TradeServices</name>
    <message>
        <source>The bus %1 is not encrypted: everybody on the way to it can read the account and place orders.</source>
        <translation>总线 %1 未加密：途中任何人都能读取账户并下单。</translation>
    </message>
</context>
<context>
    <name>Terminal::ViewMenu</name>
    <message>
        <source>View</source>
        <translation>视图</translation>
    </message>
    <message>
        <source>Green rises</source>
        <translation>绿涨红跌</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>深色</translation>
    </message>
    <message>
        <source>Export chart</source>
        <translation>导出图表</translation>
    </message>
</context>
<context>
    <name>TradeRecords</name>
    <message>
        <source>moving average</source>
        <translation>移动平均</translation>
    </message>
    <message>
        <source>diluted</source>
        <translation>摊薄</translation>
    </message>
    <message>
        <source>first in, first out</source>
        <translation>先进先出</translation>
    </message>
    <message>
        <source>Buy</source>
        <translation>买入</translation>
    </message>
    <message>
        <source>Sell</source>
        <translation>卖出</translation>
    </message>
</context>
<context>
    <name>TradeTables</name>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>Side</source>
        <translation>方向</translation>
    </message>
    <message>
        <source>Price</source>
        <translation>价格</translation>
    </message>
    <message>
        <source>Quantity</source>
        <translation>数量</translation>
    </message>
    <message>
        <source>Dealt</source>
        <translation>成交</translation>
    </message>
    <message>
        <source>Average</source>
        <translation>均价</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>编号</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>代码</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Sellable</source>
        <translation>可卖</translation>
    </message>
    <message>
        <source>Cost</source>
        <translation>成本</translation>
    </message>
    <message>
        <source>Last</source>
        <translation>现价</translation>
    </message>
    <message>
        <source>Profit</source>
        <translation>盈亏</translation>
    </message>
    <message>
        <source>Close of %1</source>
        <translation>%1 收盘价</translation>
    </message>
    <message>
        <source>No price is known</source>
        <translation>没有已知价格</translation>
    </message>
    <message>
        <source>Quote of %1</source>
        <translation>%1 的行情</translation>
    </message>
    <message>
        <source>Replayed quote of %1</source>
        <translation>%1 的回放行情</translation>
    </message>
    <message>
        <source>Security</source>
        <translation>证券</translation>
    </message>
</context>
<context>
    <name>WindowPrompts</name>
    <message>
        <source>Cancel an order</source>
        <translation>撤单</translation>
    </message>
    <message>
        <source>Cancel the order</source>
        <translation>撤销委托</translation>
    </message>
    <message>
        <source>Keep the order</source>
        <translation>保留委托</translation>
    </message>
</context>
<context>
    <name>WindowSettings</name>
    <message>
        <source>the settings cannot be read; what is missing is as by default</source>
        <translation>无法读取设置；缺少的项采用默认值</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is &quot;%2&quot;, but must be %3; the default is taken</source>
        <translation>“%1”为“%2”，应为 %3；采用默认值</translation>
    </message>
    <message>
        <source>the settings cannot be written</source>
        <translation>无法写入设置</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>this machine does not know the time zone Asia/Shanghai, by which the exchange counts its days: install its time-zone data (package tzdata)</source>
        <translation>本机没有时区 Asia/Shanghai 的数据，而交易所按该时区计日：请安装时区数据（软件包 tzdata）</translation>
    </message>
    <message>
        <source>there is no display; --snapshot FILE.png needs none</source>
        <translation>没有显示器；--snapshot FILE.png 不需要显示器</translation>
    </message>
</context>
<context>
    <name>Terminal::PartButtons</name>
    <message>
        <source>All</source>
        <translation>全部</translation>
    </message>
    <message>
        <source>Of the largest quantity</source>
        <translation>按最大数量计</translation>
    </message>
</context>
<context>
    <name>Terminal::OrdersView</name>
    <message>
        <source>Cancel this order…</source>
        <translation>撤销此委托…</translation>
    </message>
    <message>
        <source>Change price…</source>
        <translation>改价…</translation>
    </message>
</context>
<context>
    <name>OutcomeText</name>
    <message>
        <source>Sent: %1</source>
        <translation>已发送：%1</translation>
    </message>
    <message>
        <source>%1: accepted, number %2</source>
        <translation>%1：已受理，委托编号 %2</translation>
    </message>
    <message>
        <source>%1: refused: %2</source>
        <translation>%1：被拒绝：%2</translation>
    </message>
    <message>
        <source>%1: not sent, there is no connection to the trading module</source>
        <translation>%1：未发送，没有连接到交易模块</translation>
    </message>
    <message>
        <source>Cancel this order?</source>
        <translation>撤销此委托？</translation>
    </message>
    <message>
        <source>Dealt so far: %1</source>
        <translation>已成交：%1</translation>
    </message>
    <message>
        <source>Number: %1</source>
        <translation>委托编号：%1</translation>
    </message>
    <message>
        <source>%1 is not cancelled: %2</source>
        <translation>%1 未撤销：%2</translation>
    </message>
    <message>
        <source>%1 is not cancelled: there is no connection to the trading module</source>
        <translation>%1 未撤销：没有与交易模块的连接</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>%1: no answer yet to its cancellation</source>
        <translation>%1：撤单尚无应答</translation>
    </message>
    <message>
        <source>Account: %1</source>
        <translation>账户：%1</translation>
    </message>
    <message>
        <source>Amount without fees: %1</source>
        <translation>金额（不含费用）：%1</translation>
    </message>
    <message>
        <source>Do not send</source>
        <translation>不发送</translation>
    </message>
    <message>
        <source>Order %1 of %2</source>
        <translation>%2 的委托 %1</translation>
    </message>
    <message>
        <source>Send an order</source>
        <translation>下单</translation>
    </message>
    <message>
        <source>Send this order?</source>
        <translation>发送这笔委托？</translation>
    </message>
    <message>
        <source>%1: no answer, and it is not asked for any more; look at the list of orders before you send it again</source>
        <translation>%1：没有应答，不再询问；再次下单前请先核对委托列表</translation>
    </message>
    <message>
        <source>%1: outcome unknown, asking again about this one order; do not send it again yet</source>
        <translation>%1：结果未知，正就同一笔委托再次询问；请先不要重新下单</translation>
    </message>
    <message>
        <source>… and %1 more</source>
        <translation>……另有 %1 笔</translation>
    </message>
    <message>
        <source>%1, order %2</source>
        <translation>%1，委托 %2</translation>
    </message>
    <message>
        <source>Cancel orders</source>
        <translation>撤单</translation>
    </message>
    <message>
        <source>Cancel these %1 orders?</source>
        <translation>撤这 %1 笔委托？</translation>
    </message>
    <message>
        <source>Cancel all %1</source>
        <translation>全部撤掉（%1 笔）</translation>
    </message>
    <message>
        <source>Keep them</source>
        <translation>保留</translation>
    </message>
    <message>
        <source>Orders are waiting</source>
        <translation>还有挂单</translation>
    </message>
    <message>
        <source>Leave? Orders that may still be dealt: %1</source>
        <translation>还有 %1 笔委托可能成交，要离开吗？</translation>
    </message>
    <message>
        <source>They are not cancelled; nothing here tells you when they are dealt.</source>
        <translation>委托不会撤销；离开后成交时这里不会提醒。</translation>
    </message>
    <message>
        <source>Leave</source>
        <translation>离开</translation>
    </message>
    <message>
        <source>Stay</source>
        <translation>留下</translation>
    </message>
    <message>
        <source>Part dealt: %1</source>
        <translation>部分成交：%1</translation>
    </message>
    <message>
        <source>Dealt: %1</source>
        <translation>已成交：%1</translation>
    </message>
    <message>
        <source>%1: replacing it at %2</source>
        <translation>%1：正在改价为 %2</translation>
    </message>
    <message>
        <source>%1: whether it is replaced is unknown, asking again</source>
        <translation>%1：改价结果未知，正在再次询问</translation>
    </message>
    <message>
        <source>%1 stays as it is: %2</source>
        <translation>%1 保持不变：%2</translation>
    </message>
    <message>
        <source>%1 stays as it is: there is no connection to the trading module</source>
        <translation>%1 保持不变：没有连接到交易模块</translation>
    </message>
    <message>
        <source>%1: no answer to its replacement, and it is not asked for any more; look at the list of orders</source>
        <translation>%1：改价没有得到答复，且不再询问；请查看委托列表</translation>
    </message>
    <message>
        <source>%1 is replaced by order %2 at %3</source>
        <translation>%1 已由委托 %2 取代，价格 %3</translation>
    </message>
    <message>
        <source>%1 was dealt before it could be replaced</source>
        <translation>%1 在改价之前已成交</translation>
    </message>
    <message>
        <source>%1 is cancelled, and NO order stands in its place: %2</source>
        <translation>%1 已撤单，且没有新委托取代它：%2</translation>
    </message>
    <message>
        <source>Replace order %1 from %2 to %3?</source>
        <translation>将委托 %1 的价格由 %2 改为 %3？</translation>
    </message>
    <message>
        <source>What is left of it: %1</source>
        <translation>剩余部分：%1</translation>
    </message>
    <message>
        <source>It is cancelled first; what is left is placed when that is confirmed.</source>
        <translation>先撤单；撤单确认后，剩余部分按新价格委托。</translation>
    </message>
    <message>
        <source>Replace an order</source>
        <translation>改价</translation>
    </message>
    <message>
        <source>Replace at %1</source>
        <translation>改价为 %1</translation>
    </message>
    <message>
        <source>Leave it as it is</source>
        <translation>保持不变</translation>
    </message>
    <message>
        <source>They are not cancelled; they wait, as the day does, until the practice is continued.</source>
        <translation>委托不会撤销；练习日停住，委托等待，直到继续练习。</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1/%2</translation>
    </message>
    <message>
        <source>%1 %2 %3, average %4, order %5</source>
        <translation>%1 %2 %3 股，均价 %4，委托 %5</translation>
    </message>
</context>
<context>
    <name>Replay</name>
    <message>
        <source>its minute, %1, was over before it could be sent</source>
        <translation>它的分钟 %1 已过，未能发出</translation>
    </message>
</context>
<context>
    <name>ReplayLock</name>
    <message>
        <source>The replay cannot be locked: %1 cannot be written.</source>
        <translation>无法锁定回放：%1 不可写。</translation>
    </message>
    <message>
        <source>This account is replayed in another window (process %1). End that replay first.</source>
        <translation>另一个窗口（进程 %1）正在此账户上回放，请先结束那次回放。</translation>
    </message>
</context>
<context>
    <name>Terminal::TradingSession</name>
    <message>
        <source>Only a chart of minutes can be replayed.</source>
        <translation>只能回放分时图。</translation>
    </message>
    <message>
        <source>the trading module on this bus serves another account: %1</source>
        <translation>这条总线上的交易模块服务的是另一个账户：%1</translation>
    </message>
    <message>
        <source>the trading module on this bus does not say which account it serves</source>
        <translation>这条总线上的交易模块没有说明它服务哪个账户</translation>
    </message>
    <message>
        <source>This account practises %1 on %2: begin another practice for another day.</source>
        <translation>这个账户练习的是 %1 在 %2 的行情：其他日子请另开练习。</translation>
    </message>
    <message>
        <source>Orders were placed in this replay: it cannot begin again under them. A practice can, from nothing.</source>
        <translation>这次复盘中已经下过委托，不能带着它们重新开始。练习可以从头开始。</translation>
    </message>
    <message>
        <source>this account does not practise the replayed day: end the replay first</source>
        <translation>此账户并不练习所回放的日子：请先结束回放</translation>
    </message>
    <message>
        <source>The practised day stands still: the order waits until it is played on.</source>
        <translation>练习日停住了：委托等待，继续播放后才会成交。</translation>
    </message>
    <message>
        <source>The practised day is over: nothing is dealt any more.</source>
        <translation>练习日已经结束：不会再有成交。</translation>
    </message>
    <message>
        <source>A practice is its replay: it stands still now, and Space plays on. Close the window to leave it.</source>
        <translation>练习就是这一天的回放：现在已停住，按空格键继续；要离开练习，请关闭窗口。</translation>
    </message>
</context>
<context>
    <name>AnswerFaultText</name>
    <message>
        <source>&quot;%1&quot; is missing</source>
        <translation>缺少“%1”</translation>
    </message>
    <message>
        <source>&quot;%1&quot; names another screen</source>
        <translation>“%1”是别的窗口</translation>
    </message>
    <message>
        <source>the answer came on channel &quot;%1&quot;</source>
        <translation>应答发到了频道“%1”</translation>
    </message>
    <message>
        <source>the answer came twice</source>
        <translation>应答来了两次</translation>
    </message>
    <message>
        <source>the answer is no JSON object: %1</source>
        <translation>应答不是 JSON 对象：%1</translation>
    </message>
    <message>
        <source>refused, without a reason</source>
        <translation>被拒绝，未说明原因</translation>
    </message>
    <message>
        <source>refused: %1</source>
        <translation>被拒绝：%1</translation>
    </message>
    <message>
        <source>; %1</source>
        <translation>；%1</translation>
    </message>
    <message>
        <source> (rows: %1)</source>
        <translation>（%1 行）</translation>
    </message>
    <message>
        <source>An answer of the trading module</source>
        <translation>交易模块的一条应答</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is %2, but must be: %3</source>
        <translation>“%1”为 %2，应为：%3</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is %2, another market&apos;s</source>
        <translation>“%1”为 %2，属于另一市场</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is %2, which nobody asked</source>
        <translation>“%1”为 %2，无人查询</translation>
    </message>
</context>
<context>
    <name>MessageTable</name>
    <message>
        <source>text</source>
        <translation>文本</translation>
    </message>
    <message>
        <source>number</source>
        <translation>数字</translation>
    </message>
    <message>
        <source>true or false</source>
        <translation>真或假</translation>
    </message>
    <message>
        <source>texts</source>
        <translation>文本列表</translation>
    </message>
    <message>
        <source>object</source>
        <translation>对象</translation>
    </message>
    <message>
        <source>array of objects</source>
        <translation>对象列表</translation>
    </message>
    <message>
        <source>nobody minds</source>
        <translation>没有影响</translation>
    </message>
    <message>
        <source>refused; the reason names the key</source>
        <translation>被拒绝，原因中指明该键</translation>
    </message>
    <message>
        <source>left alone, with a warning that names the key</source>
        <translation>被忽略，并在日志中指明该键</translation>
    </message>
    <message>
        <source>the answer goes to the sender</source>
        <translation>应答发回给提问者</translation>
    </message>
    <message>
        <source>the message is ignored</source>
        <translation>该消息被忽略</translation>
    </message>
    <message>
        <source>counts as nothing</source>
        <translation>视为没有数据</translation>
    </message>
    <message>
        <source>counts as a failure</source>
        <translation>视为失败</translation>
    </message>
    <message>
        <source>counts as a success</source>
        <translation>视为成功</translation>
    </message>
    <message>
        <source>the user reads an empty message</source>
        <translation>用户看到的是空消息</translation>
    </message>
    <message>
        <source>no line, or one at 0</source>
        <translation>没有成本线，或画在 0 处</translation>
    </message>
    <message>
        <source>the row is left out</source>
        <translation>该行被略去</translation>
    </message>
    <message>
        <source>counts as 0</source>
        <translation>视为 0</translation>
    </message>
    <message>
        <source>counts as a sale</source>
        <translation>视为卖出</translation>
    </message>
    <message>
        <source>every trade is listed twice</source>
        <translation>每笔成交列出两次</translation>
    </message>
    <message>
        <source>the trade stands on no bar</source>
        <translation>该成交不在任何 K 线上</translation>
    </message>
    <message>
        <source>the trade is listed at a wrong time</source>
        <translation>该成交列在错误的时间</translation>
    </message>
    <message>
        <source>the order stands at 09:31</source>
        <translation>该委托画在 09:31 处</translation>
    </message>
    <message>
        <source>the order gets no marker</source>
        <translation>该委托没有标记</translation>
    </message>
    <message>
        <source>the order cannot be cancelled</source>
        <translation>该委托无法撤单</translation>
    </message>
    <message>
        <source>drawn all the same</source>
        <translation>仍然画出</translation>
    </message>
    <message>
        <source>not empty</source>
        <translation>非空</translation>
    </message>
    <message>
        <source>yyyymmdd</source>
        <translation>yyyymmdd</translation>
    </message>
    <message>
        <source>hhmmsscc</source>
        <translation>hhmmsscc</translation>
    </message>
    <message>
        <source>hhmm, hhmmss or hhmmsscc</source>
        <translation>hhmm、hhmmss 或 hhmmsscc</translation>
    </message>
    <message>
        <source>decimal, at least 0</source>
        <translation>不小于 0 的小数</translation>
    </message>
    <message>
        <source>decimal, or &quot;nan&quot;</source>
        <translation>小数或“nan”</translation>
    </message>
    <message>
        <source>whole number from 0 to 2147483647</source>
        <translation>0 到 2147483647 的整数</translation>
    </message>
    <message>
        <source>whole number from 1 to 2147483647</source>
        <translation>1 到 2147483647 的整数</translation>
    </message>
    <message>
        <source>&quot;B&quot; or &quot;S&quot;</source>
        <translation>“B”或“S”</translation>
    </message>
    <message>
        <source>&quot;0B&quot;, &quot;0S&quot; or another direction code</source>
        <translation>“0B”、“0S”或其他买卖代码</translation>
    </message>
    <message>
        <source>a status code</source>
        <translation>委托状态代码</translation>
    </message>
    <message>
        <source>&quot;SH&quot; or &quot;SZ&quot;</source>
        <translation>“SH”或“SZ”</translation>
    </message>
    <message>
        <source>&quot;1&quot; or &quot;2&quot;</source>
        <translation>“1”或“2”</translation>
    </message>
    <message>
        <source>&quot;SH&quot;, &quot;SZ&quot;, &quot;1&quot; or &quot;2&quot;</source>
        <translation>“SH”、“SZ”、“1”或“2”</translation>
    </message>
    <message>
        <source>a command</source>
        <translation>命令</translation>
    </message>
    <message>
        <source>1 to 64 printable ASCII characters</source>
        <translation>1 到 64 个可打印 ASCII 字符</translation>
    </message>
    <message>
        <source>decimal</source>
        <translation>小数</translation>
    </message>
    <message>
        <source>&quot;sale&quot;, &quot;trip&quot;, &quot;security&quot;, &quot;month&quot; or &quot;year&quot;</source>
        <translation>“sale”、“trip”、“security”、“month”或“year”</translation>
    </message>
    <message>
        <source>a column of the list</source>
        <translation>列表中的一列</translation>
    </message>
    <message>
        <source>&quot;average&quot;, &quot;diluted&quot; or &quot;fifo&quot;</source>
        <translation>“average”、“diluted”或“fifo”</translation>
    </message>
    <message>
        <source>the cell is empty</source>
        <translation>单元格为空</translation>
    </message>
    <message>
        <source>&quot;waiting&quot;, &quot;placed&quot;, &quot;dealt&quot; or &quot;failed&quot;</source>
        <translation>“waiting”、“placed”、“dealt”或“failed”</translation>
    </message>
    <message>
        <source>ISO 8601 in UTC, as 2026-11-22T01:30:00Z</source>
        <translation>ISO 8601 格式的世界时，如 2026-11-22T01:30:00Z</translation>
    </message>
    <message>
        <source>0, 1, 2 or 3</source>
        <translation>0、1、2 或 3</translation>
    </message>
</context>
<context>
    <name>OverlayState</name>
    <message>
        <source>in view: %1</source>
        <translation>可见 %1 个</translation>
    </message>
    <message>
        <source>none in view</source>
        <translation>可见范围内没有</translation>
    </message>
    <message>
        <source>not on this chart</source>
        <translation>此图不显示</translation>
    </message>
    <message>
        <source>not asked yet</source>
        <translation>尚未查询</translation>
    </message>
    <message>
        <source>asked, no answer yet</source>
        <translation>已查询，尚无应答</translation>
    </message>
    <message>
        <source>nothing; of another market: %1</source>
        <translation>没有数据；另一市场 %1 行</translation>
    </message>
    <message>
        <source>nothing there</source>
        <translation>没有数据</translation>
    </message>
    <message>
        <source>refused</source>
        <translation>被拒绝</translation>
    </message>
    <message>
        <source>wrong answer</source>
        <translation>应答有误</translation>
    </message>
    <message>
        <source>no answer since %1</source>
        <translation>自 %1 起没有应答</translation>
    </message>
    <message>
        <source>%1; %2</source>
        <translation>%1；%2</translation>
    </message>
</context>
<context>
    <name>ModuleState</name>
    <message>
        <source>Trading module: not asked</source>
        <translation>交易模块：未查询</translation>
    </message>
    <message>
        <source>Trading module: waiting for it</source>
        <translation>交易模块：等待中</translation>
    </message>
    <message>
        <source>Trading module: none answers</source>
        <translation>交易模块：无应答</translation>
    </message>
    <message>
        <source>Trading module: answers</source>
        <translation>交易模块：已应答</translation>
    </message>
    <message>
        <source>Trading module: answers, takes no orders</source>
        <translation>交易模块：已应答，不接受委托</translation>
    </message>
    <message>
        <source>Trading module: does not run</source>
        <translation>交易模块：未运行</translation>
    </message>
    <message>
        <source>This terminal has version %1; both should be of one version</source>
        <translation>本终端版本为 %1；两者应使用同一版本</translation>
    </message>
    <message>
        <source>Version %1 on %2, ledger: %3</source>
        <translation>版本 %1，主机 %2，账本：%3</translation>
    </message>
    <message>
        <source>Trading module: no bus</source>
        <translation>交易模块：没有总线</translation>
    </message>
    <message>
        <source>Trading module: refuses</source>
        <translation>交易模块：拒绝查询</translation>
    </message>
    <message>
        <source>Trading module: does not answer any more</source>
        <translation>交易模块：不再应答</translation>
    </message>
    <message>
        <source>No answer since %1</source>
        <translation>自 %1 起没有应答</translation>
    </message>
    <message>
        <source>This window&apos;s ledger: %1</source>
        <translation>本窗口的账本：%1</translation>
    </message>
    <message>
        <source>Trading module: starting</source>
        <translation>交易模块：正在启动</translation>
    </message>
    <message>
        <source>Trading module: of another ledger</source>
        <translation>交易模块：属于另一账本</translation>
    </message>
    <message>
        <source>Trading module: no answer since %1</source>
        <translation>交易模块：自 %1 起没有应答</translation>
    </message>
    <message>
        <source>waits for the trading module</source>
        <translation>等待交易模块</translation>
    </message>
    <message>
        <source>no bus</source>
        <translation>没有总线</translation>
    </message>
    <message>
        <source>no trading module</source>
        <translation>没有交易模块</translation>
    </message>
    <message>
        <source>the trading module does not run</source>
        <translation>交易模块未运行</translation>
    </message>
    <message>
        <source>Trading module: answers, of another version</source>
        <translation>交易模块：已应答，版本不同</translation>
    </message>
    <message>
        <source>It does not say which ledger it serves</source>
        <translation>它没有说明自己服务哪个账本</translation>
    </message>
</context>
<context>
    <name>Terminal::StateStrip</name>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
</context>
<context>
    <name>BusState</name>
    <message>
        <source>Orders cannot be sent, and nothing that changes is heard, until it is back.</source>
        <translation>总线恢复之前，无法发出委托，也收不到任何变动。</translation>
    </message>
    <message>
        <source>Bus: joining</source>
        <translation>总线：正在连接</translation>
    </message>
    <message>
        <source>Bus: joined</source>
        <translation>总线：已连接</translation>
    </message>
    <message>
        <source>Bus: gone, joining again</source>
        <translation>总线：已断开，正在重新连接</translation>
    </message>
    <message>
        <source>Bus: does not run</source>
        <translation>总线：未运行</translation>
    </message>
</context>
<context>
    <name>ResultTitles</name>
    <message>
        <source>Day</source>
        <translation>日期</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>Month</source>
        <translation>月份</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>年份</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>代码</translation>
    </message>
    <message>
        <source>Market</source>
        <translation>市场</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Opened</source>
        <translation>开仓</translation>
    </message>
    <message>
        <source>Closed</source>
        <translation>清仓</translation>
    </message>
    <message>
        <source>Price</source>
        <translation>价格</translation>
    </message>
    <message>
        <source>Quantity</source>
        <translation>数量</translation>
    </message>
    <message>
        <source>Shares in</source>
        <translation>增加股数</translation>
    </message>
    <message>
        <source>Shares out</source>
        <translation>减少股数</translation>
    </message>
    <message>
        <source>Sales</source>
        <translation>卖出笔数</translation>
    </message>
    <message>
        <source>Amount</source>
        <translation>成交金额</translation>
    </message>
    <message>
        <source>Fees</source>
        <translation>费用</translation>
    </message>
    <message>
        <source>Bought for</source>
        <translation>买入金额</translation>
    </message>
    <message>
        <source>Sold for</source>
        <translation>卖出金额</translation>
    </message>
    <message>
        <source>Stamp duty</source>
        <translation>其中印花税</translation>
    </message>
    <message>
        <source>Cost of sold</source>
        <translation>卖出成本</translation>
    </message>
    <message>
        <source>Profit</source>
        <translation>盈亏</translation>
    </message>
    <message>
        <source>Profit %</source>
        <translation>盈亏 %</translation>
    </message>
    <message>
        <source>Dividends</source>
        <translation>红利</translation>
    </message>
    <message>
        <source>Dividend tax</source>
        <translation>红利税</translation>
    </message>
    <message>
        <source>Interest</source>
        <translation>利息</translation>
    </message>
    <message>
        <source>Total</source>
        <translation>合计</translation>
    </message>
    <message>
        <source>Held</source>
        <translation>持有</translation>
    </message>
    <message>
        <source>Cost of held</source>
        <translation>持有成本</translation>
    </message>
    <message>
        <source>Cost per share</source>
        <translation>成本价</translation>
    </message>
    <message>
        <source>Cost</source>
        <translation>成本</translation>
    </message>
    <message>
        <source>By security</source>
        <translation>按证券</translation>
    </message>
    <message>
        <source>By month</source>
        <translation>按月份</translation>
    </message>
    <message>
        <source>By year</source>
        <translation>按年份</translation>
    </message>
    <message>
        <source>By sale</source>
        <translation>按每笔卖出</translation>
    </message>
    <message>
        <source>By round trip</source>
        <translation>按每轮买卖</translation>
    </message>
</context>
<context>
    <name>Terminal::ResultsPanel</name>
    <message>
        <source>no answer from the trading module</source>
        <translation>交易模块没有回应</translation>
    </message>
    <message>
        <source>refused: %1</source>
        <translation>被拒绝：%1</translation>
    </message>
    <message>
        <source>earlier statements are missing: %1</source>
        <translation>缺少更早的交割单：%1</translation>
    </message>
    <message>
        <source>Rows: %1</source>
        <translation>行数：%1</translation>
    </message>
    <message>
        <source>Cost:</source>
        <translation>成本：</translation>
    </message>
    <message>
        <source>Export CSV</source>
        <translation>导出 CSV</translation>
    </message>
    <message>
        <source>What a row stands for</source>
        <translation>每行代表什么</translation>
    </message>
    <message>
        <source>How costs are reckoned</source>
        <translation>成本算法</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>盈亏统计</translation>
    </message>
</context>
<context>
    <name>Terminal::ResultsDock</name>
    <message>
        <source>Results</source>
        <translation>盈亏统计</translation>
    </message>
    <message>
        <source>Costs stay reckoned as they were: %1</source>
        <translation>成本算法未改变：%1</translation>
    </message>
    <message>
        <source>The trading module did not say whether it reckons costs otherwise now.</source>
        <translation>交易模块没有说明是否已改用新的成本算法。</translation>
    </message>
    <message>
        <source>Export results</source>
        <translation>导出盈亏统计</translation>
    </message>
    <message>
        <source>CSV files (*.csv)</source>
        <translation>CSV 文件 (*.csv)</translation>
    </message>
    <message>
        <source>Written to %1</source>
        <translation>已写入 %1</translation>
    </message>
    <message>
        <source>%1 was not written: %2</source>
        <translation>未能写入 %1：%2</translation>
    </message>
</context>
<context>
    <name>Terminal::ResultsExport</name>
    <message>
        <source>the trading module does not answer</source>
        <translation>交易模块没有回应</translation>
    </message>
</context>
<context>
    <name>ActionColumns</name>
    <message>
        <source>no column tells what happened; known are %1</source>
        <translation>没有一列说明派息、送转、配股或拆分；可用的列是 %1</translation>
    </message>
    <message>
        <source>the column &quot;%1&quot; does not say for how many shares it is: call it 每股%1 or 每10股%1</source>
        <translation>列“%1”没有说明是每股还是每10股：请写成“每股%1”或“每10股%1”</translation>
    </message>
    <message>
        <source>the column &quot;%1&quot; is not known; known are %2</source>
        <translation>不认识列“%1”；可用的列是 %2</translation>
    </message>
    <message>
        <source>the columns &quot;%1&quot; and &quot;%2&quot; have the same meaning; delete one of them</source>
        <translation>列“%1”和“%2”含义相同，请删去其一</translation>
    </message>
</context>
<context>
    <name>ActionFile</name>
    <message>
        <source>the first line is &quot;%1&quot;, but must name the columns, &quot;exdate&quot; or 除权除息日 among them</source>
        <translation>第一行是“%1”，但应当是列名，其中要有“除权除息日”或 exdate</translation>
    </message>
    <message>
        <source>%1 fields, but there must be %2</source>
        <translation>有 %1 栏，但应当有 %2 栏</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a date: eight digits, or year, month and day apart; all in one form</source>
        <translation>“%1”不是日期：八位数字，或年、月、日分开写；全文件须用同一种写法</translation>
    </message>
    <message>
        <source>%1 is no trading day</source>
        <translation>%1 不是交易日</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a decimal number from 0 on, with eight decimals at most</source>
        <translation>“%1”不是大于等于 0、最多八位小数的数</translation>
    </message>
    <message>
        <source>so many new shares for one: are the figures for ten shares?</source>
        <translation>每股新增的股数过多：这些数是每10股的吗？</translation>
    </message>
    <message>
        <source>rights need a price, and a price needs rights</source>
        <translation>配股须有配股价，配股价须有配股</translation>
    </message>
    <message>
        <source>bonus shares and a split on one day: write what one share becomes as the split alone</source>
        <translation>同一天既有送转又有拆分：请只用拆分一列写明一股变成几股</translation>
    </message>
    <message>
        <source>nothing happened on this day</source>
        <translation>这一天没有任何派息、送转、配股或拆分</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is another security than that of the file, %2</source>
        <translation>“%1”不是本文件的证券 %2</translation>
    </message>
    <message>
        <source>%1 is there twice: write all of one day into one line</source>
        <translation>%1 出现两次：同一天的请写在一行</translation>
    </message>
    <message>
        <source>, in column %1</source>
        <translation>，在列 %1</translation>
    </message>
    <message>
        <source>%1: this is no text in UTF-8, UTF-16 or GB18030; save a workbook as CSV</source>
        <translation>%1：不是 UTF-8、UTF-16 或 GB18030 文本；表格文件请另存为 CSV</translation>
    </message>
    <message>
        <source>%1: cannot be read: %2</source>
        <translation>%1：无法读取：%2</translation>
    </message>
</context>
<context>
    <name>PriceAdjustment</name>
    <message>
        <source>the dividend of %1 is as high as the price before it, %2</source>
        <translation>%1 的派息不低于其前的价格 %2</translation>
    </message>
</context>
<context>
    <name>PriceView</name>
    <message>
        <source>Adjusted</source>
        <translation>前复权</translation>
    </message>
</context>
<context>
    <name>ViewMenu</name>
    <message>
        <source>Adjusted prices</source>
        <translation>前复权</translation>
    </message>
</context>
<context>
    <name>Terminal::FileSheet</name>
    <message>
        <source>The chosen file</source>
        <translation>所选文件</translation>
    </message>
    <message>
        <source>What the file is</source>
        <translation>文件类型</translation>
    </message>
    <message>
        <source>Statement of a broker</source>
        <translation>券商交割单</translation>
    </message>
    <message>
        <source>Bars of a security</source>
        <translation>K线数据</translation>
    </message>
    <message>
        <source>Leave out</source>
        <translation>不导入</translation>
    </message>
    <message>
        <source>What is this file?</source>
        <translation>这是什么文件？</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>采用</translation>
    </message>
    <message>
        <source>All from file names</source>
        <translation>全部按文件名</translation>
    </message>
    <message>
        <source>Each file that asks takes what its own name says: security and day.</source>
        <translation>凡有所缺的文件，证券与日期都按各自文件名所写。</translation>
    </message>
    <message>
        <source>Please choose</source>
        <translation>请选择</translation>
    </message>
    <message>
        <source>For all files</source>
        <translation>用于全部文件</translation>
    </message>
    <message>
        <source>All files that ask the same get this answer.</source>
        <translation>有同样问题的文件都用这个回答。</translation>
    </message>
    <message>
        <source>First rows, as they are understood</source>
        <translation>读懂的前几行</translation>
    </message>
</context>
<context>
    <name>Terminal::Intake</name>
    <message>
        <source>Listing files</source>
        <translation>正在列出文件</translation>
    </message>
    <message>
        <source>Reading the account's trades</source>
        <translation>读取账户成交</translation>
    </message>
    <message>
        <source>cannot be taken back: the import of bars has ended</source>
        <translation>无法撤回：导入K线的程序已结束</translation>
    </message>
    <message>
        <source>Reading</source>
        <translation>正在读取</translation>
    </message>
    <message>
        <source>Importing</source>
        <translation>正在导入</translation>
    </message>
    <message>
        <source>the trading module has ended (%1)</source>
        <translation>交易模块已结束（%1）</translation>
    </message>
    <message>
        <source>Reading bars</source>
        <translation>正在读取K线</translation>
    </message>
    <message>
        <source>Writing bars</source>
        <translation>正在写入K线</translation>
    </message>
    <message>
        <source>the import of bars has ended (%1)</source>
        <translation>导入K线的程序已结束（%1）</translation>
    </message>
    <message>
        <source>Nobody can tell whether it is in the ledger: %1. See the past imports when the ledger answers.</source>
        <translation>无法得知它是否已在账本中：%1。账本恢复应答后，请看历史导入。</translation>
    </message>
    <message>
        <source>Nobody can tell which of the bars are written: %1. See the folder %2.</source>
        <translation>无法得知哪些K线已写入：%1。请看文件夹 %2。</translation>
    </message>
</context>
<context>
    <name>Terminal::IntakeDialog</name>
    <message>
        <source>Leave out what cannot be read</source>
        <translation>读不懂的都不导入</translation>
    </message>
    <message>
        <source>Add files...</source>
        <translation>添加文件…</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>导入</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>撤销</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Import statements and bars</source>
        <translation>导入交割单和K线</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>Into the account %1; bars into %2</source>
        <translation>导入账户 %1；K线存入 %2</translation>
    </message>
    <message>
        <source>Show the chart</source>
        <translation>看图</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Nothing is written yet.</source>
        <translation>尚未写入任何内容。</translation>
    </message>
    <message>
        <source>No bars were found.</source>
        <translation>没有找到K线文件。</translation>
    </message>
    <message>
        <source>Files that need you: %1. Answer, or leave them out.</source>
        <translation>有 %1 个文件需要您处理：请回答，或选择不导入。</translation>
    </message>
    <message>
        <source>Files of the folder that are no bars: %1.</source>
        <translation>文件夹中有 %1 个文件不是K线。</translation>
    </message>
    <message>
        <source>Importing; to cancel leaves everything as it was.</source>
        <translation>正在导入；取消则一切照旧。</translation>
    </message>
    <message>
        <source>Taking back...</source>
        <translation>正在撤回…</translation>
    </message>
    <message>
        <source>Files imported: %1; not imported: %2, see there why.</source>
        <translation>已导入 %1 个文件；%2 个未导入，原因见各文件。</translation>
    </message>
    <message>
        <source>Files imported: %1.</source>
        <translation>已导入 %1 个文件。</translation>
    </message>
    <message>
        <source>Taken back; nothing is left of it.</source>
        <translation>已撤回，没有留下任何内容。</translation>
    </message>
    <message>
        <source>%1: %2 of %3</source>
        <translation>%1：%2／%3</translation>
    </message>
    <message>
        <source>Statements and bars</source>
        <translation>交割单和K线</translation>
    </message>
    <message>
        <source>Not taken back, or not known: %1, see there why. Undo tries again.</source>
        <translation>未能撤回或结果不明：%1 个，原因见各文件。“撤销”会再试一次。</translation>
    </message>
</context>
<context>
    <name>Terminal::IntakeDoor</name>
    <message>
        <source>File</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>Import statement or bars...</source>
        <translation>导入交割单或K线…</translation>
    </message>
    <message>
        <source>Import a folder of bars...</source>
        <translation>导入K线文件夹…</translation>
    </message>
    <message>
        <source>Past imports...</source>
        <translation>导入记录…</translation>
    </message>
    <message>
        <source>Start page</source>
        <translation>起始页</translation>
    </message>
    <message>
        <source>Statements and bars</source>
        <translation>交割单和K线</translation>
    </message>
    <message>
        <source>A folder of bars</source>
        <translation>K线文件夹</translation>
    </message>
</context>
<context>
    <name>Terminal::JsonChild</name>
    <message>
        <source>%1 cannot be started: %2</source>
        <translation>无法启动 %1：%2</translation>
    </message>
</context>
<context>
    <name>Terminal::PastImports</name>
    <message>
        <source>Take back...</source>
        <translation>撤回…</translation>
    </message>
    <message>
        <source>Past imports into %1</source>
        <translation>%1 的导入记录</translation>
    </message>
    <message>
        <source>Past imports</source>
        <translation>导入记录</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>%1 cannot be started: %2</source>
        <translation>无法启动 %1：%2</translation>
    </message>
    <message>
        <source>Taken back.</source>
        <translation>已撤回。</translation>
    </message>
    <message>
        <source>Take an import back</source>
        <translation>撤回一次导入</translation>
    </message>
    <message>
        <source>Take back import %1?
%2
All its entries leave the ledger.</source>
        <translation>撤回第 %1 次导入？
%2
它的全部记录都会从账本中移除。</translation>
    </message>
    <message>
        <source>Take it back</source>
        <translation>撤回</translation>
    </message>
    <message>
        <source>Keep it</source>
        <translation>保留</translation>
    </message>
    <message>
        <source>No.</source>
        <translation>编号</translation>
    </message>
    <message>
        <source>File</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>Added</source>
        <translation>新增</translation>
    </message>
    <message>
        <source>There before</source>
        <translation>已有</translation>
    </message>
    <message>
        <source>Money</source>
        <translation>资金</translation>
    </message>
    <message>
        <source>From</source>
        <translation>自</translation>
    </message>
    <message>
        <source>To</source>
        <translation>至</translation>
    </message>
    <message>
        <source>Account</source>
        <translation>账户</translation>
    </message>
    <message>
        <source>The ledger has no imports.</source>
        <translation>账本中没有导入记录。</translation>
    </message>
    <message>
        <source>Imported at</source>
        <translation>导入时间</translation>
    </message>
</context>
<context>
    <name>Terminal::StartWindow</name>
    <message>
        <source>Chart terminal</source>
        <translation>看图终端</translation>
    </message>
    <message>
        <source>Your trades on the chart</source>
        <translation>在图上看自己的买卖</translation>
    </message>
    <message>
        <source>My statement and bars</source>
        <translation>我的交割单和K线</translation>
    </message>
    <message>
        <source>Drop your broker&apos;s statement (交割单, 成交记录) and files of bars anywhere on this window, or choose them. You see first what was understood; nothing is written before you say so.</source>
        <translation>把券商的交割单或成交记录、以及K线文件拖到本窗口任意位置，或点击选择。先给您看读懂了什么，您同意后才写入。</translation>
    </message>
    <message>
        <source>Choose files...</source>
        <translation>选择文件…</translation>
    </message>
    <message>
        <source>Open my account</source>
        <translation>打开我的账户</translation>
    </message>
    <message>
        <source>The example</source>
        <translation>示例</translation>
    </message>
    <message>
        <source>An account with some years of trades in three securities: its cost line, its buys and sells.</source>
        <translation>一个交易了数年、三只证券的账户：看它的持仓成本线和买卖点。</translation>
    </message>
    <message>
        <source>Open the example</source>
        <translation>打开示例</translation>
    </message>
    <message>
        <source>The sample data are not installed.</source>
        <translation>没有安装示例数据。</translation>
    </message>
    <message>
        <source>Bars are missing: drop files of them here, too.</source>
        <translation>还缺K线：请把K线文件也拖到这里。</translation>
    </message>
    <message>
        <source>Your statement is in. Bars are missing: drop files of them here, too, of %1.</source>
        <translation>交割单已导入。还缺K线：请把 %1 的K线文件也拖到这里。</translation>
    </message>
    <message>
        <source>Practice</source>
        <translation>练习</translation>
    </message>
    <message>
        <source>A recorded day is played as if it were today, twenty times as fast, with an account of its own. Place orders, see them dealt; go on later, or look at your trades again.</source>
        <translation>历史上的一天当作今天播放，二十倍速度，使用单独的账户。下单，看它们成交；以后可以继续，也可以再看自己的成交。</translation>
    </message>
    <message>
        <source>Practise a day...</source>
        <translation>练习一天…</translation>
    </message>
</context>
<context>
    <name>BarsReport</name>
    <message>
        <source>%1 bars of minutes, %2 to %3</source>
        <translation>%1 根分钟线，%2 至 %3</translation>
    </message>
    <message>
        <source>%1 bars of days, %2 to %3</source>
        <translation>%1 根日线，%2 至 %3</translation>
    </message>
    <message>
        <source>and %1 more files</source>
        <translation>另有 %1 个文件</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>日期</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>开盘</translation>
    </message>
    <message>
        <source>High</source>
        <translation>最高</translation>
    </message>
    <message>
        <source>Low</source>
        <translation>最低</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>收盘</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>成交量</translation>
    </message>
    <message>
        <source>Line %1: %2</source>
        <translation>第 %1 行：%2</translation>
    </message>
</context>
<context>
    <name>IntakeFile</name>
    <message>
        <source>waits</source>
        <translation>等待</translation>
    </message>
    <message>
        <source>is read</source>
        <translation>正在读取</translation>
    </message>
    <message>
        <source>ready</source>
        <translation>可以导入</translation>
    </message>
    <message>
        <source>needs you</source>
        <translation>需要您处理</translation>
    </message>
    <message>
        <source>left out</source>
        <translation>不导入</translation>
    </message>
    <message>
        <source>is imported</source>
        <translation>正在导入</translation>
    </message>
    <message>
        <source>imported</source>
        <translation>已导入</translation>
    </message>
    <message>
        <source>taken back</source>
        <translation>已撤回</translation>
    </message>
    <message>
        <source>not imported</source>
        <translation>未导入</translation>
    </message>
    <message>
        <source>still there</source>
        <translation>未能撤回</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>结果不明</translation>
    </message>
</context>
<context>
    <name>IntakeQuestion</name>
    <message>
        <source>Security</source>
        <translation>证券</translation>
    </message>
    <message>
        <source>e.g. 600519.SH</source>
        <translation>例如 600519.SH</translation>
    </message>
    <message>
        <source>Unit of the volume</source>
        <translation>成交量单位</translation>
    </message>
    <message>
        <source>lots: 100 shares, or ten bonds</source>
        <translation>手（100 股，债券 10 张）</translation>
    </message>
    <message>
        <source>shares</source>
        <translation>股</translation>
    </message>
    <message>
        <source>Day</source>
        <translation>日期</translation>
    </message>
    <message>
        <source>yyyymmdd</source>
        <translation>年月日八位数字</translation>
    </message>
    <message>
        <source>Replace the bars that are there</source>
        <translation>替换已有的K线</translation>
    </message>
    <message>
        <source>all days of this security in the folder</source>
        <translation>文件夹中该证券的全部日子</translation>
    </message>
    <message>
        <source>Account</source>
        <translation>账户</translation>
    </message>
    <message>
        <source>Entries in doubt</source>
        <translation>疑似重复的记录</translation>
    </message>
    <message>
        <source>are those that are there</source>
        <translation>就是账上已有的</translation>
    </message>
    <message>
        <source>are new</source>
        <translation>是新的</translation>
    </message>
    <message>
        <source>Leave these rows out</source>
        <translation>跳过这些行</translation>
    </message>
    <message>
        <source>and import the others</source>
        <translation>导入其余各行</translation>
    </message>
    <message>
        <source>List of securities</source>
        <translation>证券列表</translation>
    </message>
    <message>
        <source>a file code,market,name</source>
        <translation>内容为 代码,市场,名称 的文件</translation>
    </message>
    <message>
        <source>Columns and words of your broker</source>
        <translation>券商的列名和用词</translation>
    </message>
    <message>
        <source>Write after each = what it means.</source>
        <translation>在每个等号后写明含义。</translation>
    </message>
    <message>
        <source>&quot;%1&quot;</source>
        <translation>“%1”</translation>
    </message>
    <message>
        <source>&quot;%1: %2&quot;</source>
        <translation>“%1：%2”</translation>
    </message>
</context>
<context>
    <name>StatementReport</name>
    <message>
        <source># Write after each = what it means, then press Use.</source>
        <translation># 在每个等号后写明含义，然后按“采用”。</translation>
    </message>
    <message>
        <source>Line %1: %2</source>
        <translation>第 %1 行：%2</translation>
    </message>
    <message>
        <source>Line %1, %2: %3</source>
        <translation>第 %1 行，%2：%3</translation>
    </message>
    <message>
        <source>and %1 more rows</source>
        <translation>另有 %1 行</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>%1 entries imported, %2 were there already</source>
        <translation>导入 %1 条，%2 条原已在账</translation>
    </message>
    <message>
        <source>%1 entries are new, %2 are there already</source>
        <translation>新增 %1 条，%2 条已在账</translation>
    </message>
    <message>
        <source>%1 rows</source>
        <translation>%1 行</translation>
    </message>
    <message>
        <source>%1, %2 to %3</source>
        <translation>%1，%2 至 %3</translation>
    </message>
    <message>
        <source>Account %1</source>
        <translation>资金账号 %1</translation>
    </message>
    <message>
        <source>Fees completed: %1</source>
        <translation>补全费用：%1 条</translation>
    </message>
    <message>
        <source>Cash on %1: %2</source>
        <translation>%1 的资金余额：%2</translation>
    </message>
    <message>
        <source>Trades</source>
        <translation>成交</translation>
    </message>
    <message>
        <source>Shares without a trade</source>
        <translation>非交易的股份变动</translation>
    </message>
    <message>
        <source>Money</source>
        <translation>资金</translation>
    </message>
    <message>
        <source>Left out</source>
        <translation>不计入</translation>
    </message>
    <message>
        <source>Kept out (short sales)</source>
        <translation>不入账（融券）</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>行</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>日期</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>业务</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>代码</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Price</source>
        <translation>价格</translation>
    </message>
    <message>
        <source>Quantity</source>
        <translation>数量</translation>
    </message>
    <message>
        <source>Amount</source>
        <translation>金额</translation>
    </message>
    <message>
        <source>Fee</source>
        <translation>费用</translation>
    </message>
    <message>
        <source>Left out: %1</source>
        <translation>已跳过：%1</translation>
    </message>
</context>
<context>
    <name>BarsTalk</name>
    <message>
        <source>no data folder is named</source>
        <translation>没有指定数据文件夹</translation>
    </message>
</context>
<context>
    <name>TerminalRuns</name>
    <message>
        <source>The account of the last time is not there any more: %1, bars in %2</source>
        <translation>上次的账户已经不在了：%1，K线在 %2</translation>
    </message>
    <message>
        <source>There is no practice &quot;%1&quot;.</source>
        <translation>没有名为“%1”的练习。</translation>
    </message>
    <message>
        <source>A practice needs a bus of its own, but endpoint.ini names one for all accounts.</source>
        <translation>练习需要单独的总线，而 endpoint.ini 为所有账户指定了同一条总线。</translation>
    </message>
    <message>
        <source>The practice &quot;%1&quot; cannot be continued: %2</source>
        <translation>练习“%1”无法继续：%2</translation>
    </message>
    <message>
        <source>it practises %1</source>
        <translation>它练习的是 %1</translation>
    </message>
    <message>
        <source>--replay with --ledger needs a ledger that practises the day: %1. Begin one with &quot;trademodule --ledger practice.db practice --day %2 --copy LEDGER&quot;, and name practice.db; the ledger that it copies stays as it is.</source>
        <translation>--replay 与 --ledger 并用时，账本必须是练习当日的：%1。请用 &quot;trademodule --ledger practice.db practice --day %2 --copy LEDGER&quot; 开始一个，并指定 practice.db；被复制的账本保持不变。</translation>
    </message>
</context>
<context>
    <name>BrokerProblem</name>
    <message>
        <source>The program &apos;mosquitto&apos; is not installed; install it with: apt install mosquitto, or: brew install mosquitto</source>
        <translation>未安装程序 mosquitto；安装方法：apt install mosquitto，或 brew install mosquitto</translation>
    </message>
    <message>
        <source>The broker &apos;%1&apos; cannot be started: %2</source>
        <translation>无法启动消息代理 %1：%2</translation>
    </message>
    <message>
        <source>The broker does not start: %1</source>
        <translation>消息代理无法启动：%1</translation>
    </message>
    <message>
        <source>The broker does not start</source>
        <translation>消息代理无法启动</translation>
    </message>
    <message>
        <source>The broker did not answer any more; another one is started</source>
        <translation>消息代理不再应答，正在另行启动一个</translation>
    </message>
    <message>
        <source>the lock file &apos;%1&apos; cannot be used: %2; remove it</source>
        <translation>锁文件 %1 无法使用：%2；请将其删除</translation>
    </message>
    <message>
        <source>the bus directory &apos;%1&apos; belongs to another user; remove it</source>
        <translation>总线目录 %1 属于另一用户；请将其删除</translation>
    </message>
    <message>
        <source>the bus directory &apos;%1&apos; is open to other users; run: chmod 700 &apos;%1&apos;</source>
        <translation>总线目录 %1 对其他用户开放；请运行：chmod 700 &apos;%1&apos;</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a directory itself (a link is not accepted); remove it</source>
        <translation>%1 本身不是目录（不接受链接）；请将其删除</translation>
    </message>
    <message>
        <source>the bus directory &apos;%1&apos;: %2</source>
        <translation>总线目录 %1：%2</translation>
    </message>
    <message>
        <source>There is no runtime directory for the bus; XDG_RUNTIME_DIR must name a directory that only its owner may enter</source>
        <translation>没有供总线使用的运行目录；XDG_RUNTIME_DIR 必须指定一个只有其所有者可进入的目录</translation>
    </message>
    <message>
        <source>The bus address &apos;%1&apos; is not a directory; it is the directory of the terminal&apos;s program</source>
        <translation>总线地址 %1 不是目录；它应是终端程序所在的目录</translation>
    </message>
</context>
<context>
    <name>MarketState</name>
    <message>
        <source>Market: not open yet</source>
        <translation>行情：尚未开盘</translation>
    </message>
    <message>
        <source>Market: %1</source>
        <translation>行情：%1</translation>
    </message>
    <message>
        <source>Market: no quote since %1</source>
        <translation>行情：%1 起无报价</translation>
    </message>
    <message>
        <source>Market: lunch break</source>
        <translation>行情：午间休市</translation>
    </message>
    <message>
        <source>Market: closed</source>
        <translation>行情：已收盘</translation>
    </message>
    <message>
        <source>The market is open, but nobody tells its prices: look at the program that publishes quotes.</source>
        <translation>市场正在交易，但没有收到报价：请检查发布行情的程序。</translation>
    </message>
</context>
<context>
    <name>BookedAction</name>
    <message>
        <source>%1: %2 yuan and %3 shares for %4</source>
        <translation>%1：%4 股收到 %2 元和 %3 股</translation>
    </message>
    <message>
        <source>%1, as the statement has it, is no exact figure for one share; it is left out</source>
        <translation>%1（对账单）无法精确换算为每股，未用于复权</translation>
    </message>
    <message>
        <source>%1, as the statement has it, is not what the file of actions says; the file holds</source>
        <translation>%1（对账单）与除权除息文件不符，以文件为准</translation>
    </message>
</context>
<context>
    <name>OrderStatus</name>
    <message>
        <source>not sent</source>
        <translation>未报</translation>
    </message>
    <message>
        <source>on its way</source>
        <translation>正报</translation>
    </message>
    <message>
        <source>open</source>
        <translation>已报</translation>
    </message>
    <message>
        <source>being cancelled</source>
        <translation>已报待撤</translation>
    </message>
    <message>
        <source>part dealt, being cancelled</source>
        <translation>部成待撤</translation>
    </message>
    <message>
        <source>part dealt, rest cancelled</source>
        <translation>部撤</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>已撤</translation>
    </message>
    <message>
        <source>part dealt</source>
        <translation>部成</translation>
    </message>
    <message>
        <source>dealt</source>
        <translation>已成</translation>
    </message>
    <message>
        <source>void</source>
        <translation>废单</translation>
    </message>
    <message>
        <source>to be sent</source>
        <translation>待报</translation>
    </message>
    <message>
        <source>confirmed</source>
        <translation>已确认</translation>
    </message>
</context>
<context>
    <name>Terminal::OverlayBar</name>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>Overlays</source>
        <translation>图层</translation>
    </message>
</context>
<context>
    <name>Terminal::DealNotice</name>
    <message>
        <source>Sound when an order is dealt</source>
        <translation>成交时响铃</translation>
    </message>
    <message>
        <source>Desktop notification when an order is dealt</source>
        <translation>成交时发桌面通知</translation>
    </message>
    <message>
        <source>%1 orders were dealt, wholly or in part. The last one:
%2</source>
        <translation>有 %1 笔委托全部或部分成交。最近一笔：
%2</translation>
    </message>
</context>
<context>
    <name>Terminal::HelpMenu</name>
    <message>
        <source>%1 %2

Charts with your own trades, orders and costs on them, and a trading module that keeps your account. Orders of its paper exchange move no real money.

The guides are in the folder docs of the program's documentation.</source>
        <translation>%1 %2

在行情图上看自己的成交、委托和成本，并有保存账户的交易模块。模拟交易所的委托不动用真实资金。

使用指南在程序文档的 docs 文件夹里。</translation>
    </message>
    <message>
        <source>About</source>
        <translation>关于</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>帮助</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>快捷键</translation>
    </message>
</context>
<context>
    <name>Terminal::OrdersBar</name>
    <message>
        <source>This security</source>
        <translation>本证券</translation>
    </message>
    <message>
        <source>All working</source>
        <translation>全部挂单</translation>
    </message>
    <message>
        <source>Which orders are listed</source>
        <translation>列出哪些委托</translation>
    </message>
    <message>
        <source>The day's orders of the shown security, or the orders of all securities that may still be dealt</source>
        <translation>所示证券当日的委托，或全部证券仍可能成交的委托</translation>
    </message>
    <message>
        <source>Cancel selected…</source>
        <translation>撤选中…</translation>
    </message>
    <message>
        <source>Asks before it cancels the selected orders (Delete in the list)</source>
        <translation>先询问，再撤选中的委托（列表中按 Delete）</translation>
    </message>
    <message>
        <source>Cancel all…</source>
        <translation>全撤…</translation>
    </message>
    <message>
        <source>Asks before it cancels all orders of the list that can be cancelled</source>
        <translation>先询问，再撤列表中所有可撤的委托</translation>
    </message>
</context>
<context>
    <name>Terminal::PositionsView</name>
    <message>
        <source>Show its chart</source>
        <translation>看它的图</translation>
    </message>
    <message>
        <source>Close this position…</source>
        <translation>平掉这笔持仓…</translation>
    </message>
    <message>
        <source>Show its trades</source>
        <translation>看它的成交</translation>
    </message>
</context>
<context>
    <name>Terminal::TradeDock</name>
    <message>
        <source>Close: %1</source>
        <translation>关闭：%1</translation>
    </message>
</context>
<context>
    <name>VolumeUnit</name>
    <message>
        <source>shares</source>
        <translation>股</translation>
    </message>
    <message>
        <source>lots</source>
        <translation>手</translation>
    </message>
    <message>
        <source>thousand shares</source>
        <translation>千股</translation>
    </message>
    <message>
        <source>hundred million shares</source>
        <translation>亿股</translation>
    </message>
    <message>
        <source>ten thousand shares</source>
        <translation>万股</translation>
    </message>
    <message>
        <source>ten thousand lots</source>
        <translation>万手</translation>
    </message>
</context>
<context>
    <name>WatchTable</name>
    <message>
        <source>Code</source>
        <translation>代码</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Last</source>
        <translation>现价</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>涨跌</translation>
    </message>
    <message>
        <source>No price is known</source>
        <translation>没有已知价格</translation>
    </message>
</context>
<context>
    <name>Terminal::WatchView</name>
    <message>
        <source>Show its chart</source>
        <translation>看它的图</translation>
    </message>
    <message>
        <source>Take it off the list</source>
        <translation>移出自选</translation>
    </message>
</context>
<context>
    <name>Terminal::WatchDock</name>
    <message>
        <source>Watch list</source>
        <translation>自选</translation>
    </message>
    <message>
        <source>Watch the shown security</source>
        <translation>加入或移出自选</translation>
    </message>
</context>
<context>
    <name>Terminal::KeysDialog</name>
    <message>
        <source>Keys</source>
        <translation>快捷键</translation>
    </message>
    <message>
        <source>The window</source>
        <translation>窗口</translation>
    </message>
    <message>
        <source>look for a security by code, name or the first letters of its syllables</source>
        <translation>按代码、名称或拼音首字母找证券</translation>
    </message>
    <message>
        <source>show or hide an overlay</source>
        <translation>显示或隐藏图层</translation>
    </message>
    <message>
        <source>hide or show amounts</source>
        <translation>隐藏或显示金额</translation>
    </message>
    <message>
        <source>put the shown security on the watch list, or take it away</source>
        <translation>把所示证券加入或移出自选</translation>
    </message>
    <message>
        <source>watch list</source>
        <translation>自选</translation>
    </message>
    <message>
        <source>adjusted prices</source>
        <translation>前复权</translation>
    </message>
    <message>
        <source>export the chart</source>
        <translation>导出图片</translation>
    </message>
    <message>
        <source>to the next control, and back</source>
        <translation>到下一个控件，或退回</translation>
    </message>
    <message>
        <source>these keys</source>
        <translation>本页</translation>
    </message>
    <message>
        <source>The chart</source>
        <translation>行情图</translation>
    </message>
    <message>
        <source>move the chart</source>
        <translation>移动</translation>
    </message>
    <message>
        <source>move it by its width</source>
        <translation>移动一屏</translation>
    </message>
    <message>
        <source>first and last bars</source>
        <translation>最早和最新</translation>
    </message>
    <message>
        <source>zoom</source>
        <translation>缩放</translation>
    </message>
    <message>
        <source>next and last mark</source>
        <translation>下一个、上一个标记</translation>
    </message>
    <message>
        <source>list what is at the mark</source>
        <translation>列出标记处的内容</translation>
    </message>
    <message>
        <source>leave the marks</source>
        <translation>离开标记</translation>
    </message>
    <message>
        <source>Orders</source>
        <translation>委托</translation>
    </message>
    <message>
        <source>ticket: buy, sell</source>
        <translation>下单：买入、卖出</translation>
    </message>
    <message>
        <source>orders and positions</source>
        <translation>委托与持仓</translation>
    </message>
    <message>
        <source>in the ticket: send the order</source>
        <translation>在下单处：发出委托</translation>
    </message>
    <message>
        <source>from the ticket back to the chart</source>
        <translation>从下单处回到图</translation>
    </message>
    <message>
        <source>in a list: cancel the selected orders, close the position</source>
        <translation>在列表中：撤选中的委托，平掉持仓</translation>
    </message>
    <message>
        <source>in a list: the chart of the row</source>
        <translation>在列表中：看该行的图</translation>
    </message>
    <message>
        <source>Replay</source>
        <translation>回放</translation>
    </message>
    <message>
        <source>play the shown day, or end it</source>
        <translation>回放所示的一天，或结束</translation>
    </message>
    <message>
        <source>play, pause</source>
        <translation>播放、暂停</translation>
    </message>
    <message>
        <source>one minute on</source>
        <translation>前进一分钟</translation>
    </message>
    <message>
        <source>slower, faster</source>
        <translation>慢、快</translation>
    </message>
    <message>
        <source>begin the day again</source>
        <translation>从头开始</translation>
    </message>
    <message>
        <source>results, trades</source>
        <translation>盈亏、成交</translation>
    </message>
    <message>
        <source>trades and open orders on the chart, or none</source>
        <translation>在图上显示成交和挂单，或不显示</translation>
    </message>
    <message>
        <source>take in statements and bars</source>
        <translation>导入交割单和行情</translation>
    </message>
    <message>
        <source>back to where a list led away from</source>
        <translation>返回列表跳转之前的位置</translation>
    </message>
    <message>
        <source>on a position: its trades</source>
        <translation>在持仓上：看它的成交</translation>
    </message>
</context>
<context>
    <name>TradesTable</name>
    <message>
        <source>Date</source>
        <translation>日期</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>Side</source>
        <translation>方向</translation>
    </message>
    <message>
        <source>Quantity</source>
        <translation>数量</translation>
    </message>
    <message>
        <source>Price</source>
        <translation>价格</translation>
    </message>
    <message>
        <source>Amount</source>
        <translation>金额</translation>
    </message>
    <message>
        <source>Order</source>
        <translation>委托</translation>
    </message>
</context>
<context>
    <name>Terminal::TradesPanel</name>
    <message>
        <source>bought %1 at %2 on average: %3</source>
        <translation>买入 %1 股，均价 %2，金额 %3</translation>
    </message>
    <message>
        <source>sold %1 at %2 on average: %3</source>
        <translation>卖出 %1 股，均价 %2，金额 %3</translation>
    </message>
    <message>
        <source>Trades of %1 · refused: %2</source>
        <translation>%1 成交 · 被拒绝：%2</translation>
    </message>
    <message>
        <source>Selected: %1</source>
        <translation>已选：%1</translation>
    </message>
    <message>
        <source>Trades of %1: %2</source>
        <translation>%1 成交：%2</translation>
    </message>
    <message>
        <source>Trades</source>
        <translation>成交</translation>
    </message>
    <message>
        <source>Trades of %1 · no answer from the trading module</source>
        <translation>%1 的成交 · 交易模块没有应答</translation>
    </message>
</context>
<context>
    <name>Terminal::PriceDialog</name>
    <message>
        <source>Change the price of an order</source>
        <translation>改价</translation>
    </message>
    <message>
        <source>New price of order %1, %2, from %3 to %4:</source>
        <translation>委托 %1（%2）的新价格，%3 至 %4：</translation>
    </message>
    <message>
        <source>Replace…</source>
        <translation>改价…</translation>
    </message>
    <message>
        <source>Leave it</source>
        <translation>不改</translation>
    </message>
</context>
<context>
    <name>Terminal::ChartTrail</name>
    <message>
        <source>Back to where a list led away from</source>
        <translation>返回列表跳转之前的位置</translation>
    </message>
</context>
<context>
    <name>Terminal::ChartTrades</name>
    <message>
        <source>Trades</source>
        <translation>成交</translation>
    </message>
    <message>
        <source>List of trades</source>
        <translation>成交列表</translation>
    </message>
    <message>
        <source>Trades and open orders on the chart</source>
        <translation>图上显示成交与未成委托</translation>
    </message>
    <message>
        <source>This trading module cannot change the price of an order: cancel it and place another.</source>
        <translation>此交易模块不能改价：请撤单后重新委托。</translation>
    </message>
    <message>
        <source>Order %1 is not open any more.</source>
        <translation>委托 %1 已不再有效。</translation>
    </message>
</context>
<context>
    <name>PracticeSessions</name>
    <message>
        <source>There is a practice &quot;%1&quot; already: give this one another name.</source>
        <translation>已经有名为“%1”的练习：请换一个名称。</translation>
    </message>
    <message>
        <source>The practice cannot be kept: %1 cannot be written.</source>
        <translation>练习无法保存：无法写入 %1。</translation>
    </message>
    <message>
        <source>The practice cannot be begun again: %1 cannot be written.</source>
        <translation>练习无法重新开始：无法写入 %1。</translation>
    </message>
    <message>
        <source>The practice cannot be deleted: %1 cannot be changed.</source>
        <translation>练习无法删除：无法更改 %1。</translation>
    </message>
</context>
<context>
    <name>PracticeLock</name>
    <message>
        <source>The practice &quot;%1&quot; is open in another window (process %2). Close that one first.</source>
        <translation>练习“%1”已在另一个窗口中打开（进程 %2）。请先关闭那个窗口。</translation>
    </message>
    <message>
        <source>The practice &quot;%1&quot; cannot be opened: %2 cannot be written.</source>
        <translation>练习“%1”无法打开：无法写入 %2。</translation>
    </message>
</context>
<context>
    <name>Terminal::PracticeBeginning</name>
    <message>
        <source>The trading module %1 cannot be started: %2</source>
        <translation>交易模块 %1 无法启动：%2</translation>
    </message>
    <message>
        <source>There is no room for the practice: its folder cannot be made.</source>
        <translation>练习没有地方存放：无法建立它的文件夹。</translation>
    </message>
</context>
<context>
    <name>Terminal::PracticeDoor</name>
    <message>
        <source>Practise a day...</source>
        <translation>练习一天…</translation>
    </message>
    <message>
        <source>The bars of the practice are not there any more: %1</source>
        <translation>练习的行情数据已不在：%1</translation>
    </message>
    <message>
        <source>The window of the practice cannot be started.</source>
        <translation>练习的窗口无法启动。</translation>
    </message>
</context>
<context>
    <name>Terminal::PracticeDialog</name>
    <message>
        <source>Cash and holdings of the account %1</source>
        <translation>账户 %1 的资金和持仓</translation>
    </message>
    <message>
        <source>Others:</source>
        <translation>另外指定：</translation>
    </message>
    <message>
        <source>Begin</source>
        <translation>开始</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>继续</translation>
    </message>
    <message>
        <source>Delete...</source>
        <translation>删除…</translation>
    </message>
    <message>
        <source>Practice</source>
        <translation>练习</translation>
    </message>
    <message>
        <source>Practise %1 %2 on %3</source>
        <translation>练习 %1 %2，%3</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Begins with</source>
        <translation>起始账户</translation>
    </message>
    <message>
        <source>Cash, yuan</source>
        <translation>资金（元）</translation>
    </message>
    <message>
        <source>Shares of %1</source>
        <translation>%1 股数</translation>
    </message>
    <message>
        <source>Their cost price, yuan</source>
        <translation>成本价（元）</translation>
    </message>
    <message>
        <source>Practices that are kept</source>
        <translation>保存的练习</translation>
    </message>
    <message>
        <source>Security</source>
        <translation>证券</translation>
    </message>
    <message>
        <source>Day</source>
        <translation>日期</translation>
    </message>
    <message>
        <source>Begun</source>
        <translation>开始于</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Delete the practice &quot;%1&quot; with its orders and trades?</source>
        <translation>删除练习“%1”以及其中的委托和成交？</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>保留</translation>
    </message>
    <message>
        <source>To practise a recorded day, show its chart of minutes: of a day before today</source>
        <translation>要练习录制的某一天，请先打开那天（今天以前）的分时图</translation>
    </message>
</context>
<context>
    <name>BarRemarks</name>
    <message>
        <source>%1 of %2 bars have a volume of less than a lot, %3: is it in lots?</source>
        <translation>%2 根K线中有 %1 根的成交量不足一手（%3）：是以手为单位吗？</translation>
    </message>
    <message>
        <source>All volumes are whole multiples of %1: are they in shares, and not in lots?</source>
        <translation>成交量全是 %1 的整数倍：是以股而不是以手为单位吗？</translation>
    </message>
    <message>
        <source>Most bars are %1 days apart; the terminal takes each for one day.</source>
        <translation>多数K线相隔 %1 天；本终端把每根都当作一天。</translation>
    </message>
    <message>
        <source>The prices are adjusted: the cost and the trades of an account do not lie on them.</source>
        <translation>价格是复权的：账户的成本与成交不会落在K线上。</translation>
    </message>
    <message>
        <source>These are bars of %1 minutes; the terminal takes each for one minute.</source>
        <translation>这是 %1 分钟线；终端把每根当作一分钟。</translation>
    </message>
</context>
<context>
    <name>Terminal::MarketHours</name>
    <message>
        <source>Market closed</source>
        <translation>休市</translation>
    </message>
    <message>
        <source>Before the open</source>
        <translation>开盘前</translation>
    </message>
    <message>
        <source>Opening auction</source>
        <translation>开盘集合竞价</translation>
    </message>
    <message>
        <source>Before the morning session</source>
        <translation>等待开盘</translation>
    </message>
    <message>
        <source>Morning session</source>
        <translation>上午交易</translation>
    </message>
    <message>
        <source>Noon break</source>
        <translation>午间休市</translation>
    </message>
    <message>
        <source>Afternoon session</source>
        <translation>下午交易</translation>
    </message>
    <message>
        <source>Closing auction</source>
        <translation>收盘集合竞价</translation>
    </message>
    <message>
        <source>After the close</source>
        <translation>已收盘</translation>
    </message>
    <message>
        <source>Trading at the closing price</source>
        <translation>盘后定价交易</translation>
    </message>
    <message>
        <source>Your holidays cannot be read, and none of them counts: %1: %2</source>
        <translation>您的休市日文件无法读取，均不采用：%1：%2</translation>
    </message>
    <message>
        <source>Your holidays do not count until line %2 of %1 is put right: &quot;%3&quot; is no day, such as 2027-01-01, and no first and last day, such as 2027-02-08,2027-02-12.</source>
        <translation>请改正 %1 第 %2 行，此前您的休市日均不采用：“%3”不是日期（如 2027-01-01），也不是首日与末日（如 2027-02-08,2027-02-12）。</translation>
    </message>
    <message>
        <source>Your holidays do not count until line %2 of %1 is put right: &quot;%3&quot; ends before it begins.</source>
        <translation>请改正 %1 第 %2 行，此前您的休市日均不采用：“%3”的结束早于开始。</translation>
    </message>
    <message>
        <source>Your holidays do not count until line %2 of %1 is put right: &quot;%3&quot; is longer than a month.</source>
        <translation>请改正 %1 第 %2 行，此前您的休市日均不采用：“%3”超过一个月。</translation>
    </message>
</context>
<context>
    <name>QCommandLineParser</name>
    <message>
        <source>Usage: %1</source>
        <translation>用法：%1</translation>
    </message>
    <message>
        <source>[options]</source>
        <translation>[选项]</translation>
    </message>
    <message>
        <source>Options:</source>
        <translation>选项：</translation>
    </message>
    <message>
        <source>Arguments:</source>
        <translation>参数：</translation>
    </message>
    <message>
        <source>Displays version information.</source>
        <translation>显示版本信息。</translation>
    </message>
    <message>
        <source>Displays help on commandline options.</source>
        <translation>显示命令行选项的帮助。</translation>
    </message>
    <message>
        <source>Displays this help.</source>
        <translation>显示本帮助。</translation>
    </message>
    <message>
        <source>Displays help including Qt specific options.</source>
        <translation>显示包括 Qt 专用选项的帮助。</translation>
    </message>
    <message>
        <source>Unknown option &apos;%1&apos;.</source>
        <translation>未知选项“%1”。</translation>
    </message>
    <message>
        <source>Unknown options: %1.</source>
        <translation>未知选项：%1。</translation>
    </message>
    <message>
        <source>Missing value after &apos;%1&apos;.</source>
        <translation>“%1”之后缺少值。</translation>
    </message>
    <message>
        <source>Unexpected value after &apos;%1&apos;.</source>
        <translation>“%1”之后有多余的值。</translation>
    </message>
</context>
<context>
    <name>TerminalOptions</name>
    <message>
        <source>a text that is not empty</source>
        <translation>非空的文字</translation>
    </message>
    <message>
        <source>a date of the form yyyymmdd</source>
        <translation>形如 yyyymmdd 的日期</translation>
    </message>
    <message>
        <source>a list, separated by commas, of %1</source>
        <translation>以逗号分隔的列表，可选：%1</translation>
    </message>
    <message>
        <source>security, month, year, sale or trip</source>
        <translation>security、month、year、sale 或 trip</translation>
    </message>
    <message>
        <source>WIDTHxHEIGHT between 640x360 and 8192x8192, e.g. 1600x900</source>
        <translation>宽x高，介于 640x360 与 8192x8192 之间，例如 1600x900</translation>
    </message>
    <message>
        <source>a number of seconds from 1 to 600</source>
        <translation>1 到 600 之间的秒数</translation>
    </message>
    <message>
        <source>a speed from %1 to %2</source>
        <translation>%1 到 %2 之间的倍速</translation>
    </message>
    <message>
        <source>a trading minute as hhmm, e.g. 1000</source>
        <translation>形如 hhmm 的交易分钟，例如 1000</translation>
    </message>
    <message>
        <source>Folder with securities.csv, daily/ and minute/.</source>
        <translation>含有 securities.csv、daily/ 和 minute/ 的数据文件夹。</translation>
    </message>
    <message>
        <source>Security to show, e.g. 600519.</source>
        <translation>要显示的证券，例如 600519。</translation>
    </message>
    <message>
        <source>day, week, month or minute.</source>
        <translation>day（日线）、week（周线）、month（月线）或 minute（分时）。</translation>
    </message>
    <message>
        <source>Day of a minute chart; else the last recorded.</source>
        <translation>分时图的日期；缺省为最后一个有数据的交易日。</translation>
    </message>
    <message>
        <source>Overlays to show, separated by commas: %1.</source>
        <translation>要显示的叠加层，以逗号分隔：%1。</translation>
    </message>
    <message>
        <source>on or off: every trade at its minute and price, and open orders; a picture has them when this says on.</source>
        <translation>on 或 off：在成交的分钟和价位显示每笔成交，以及未完成的委托；图片只在此项为 on 时才画。</translation>
    </message>
    <message>
        <source>Opens the list of results: by security, month, year, sale or trip.</source>
        <translation>打开盈亏列表：按 security（证券）、month（月）、year（年）、sale（每次卖出）或 trip（每个来回）。</translation>
    </message>
    <message>
        <source>File of the overlay library.</source>
        <translation>叠加层插件的文件。</translation>
    </message>
    <message>
        <source>Ledger to serve; starts the trading module on it.</source>
        <translation>要使用的账本；交易模块随之启动。</translation>
    </message>
    <message>
        <source>Program of the trading module.</source>
        <translation>交易模块的程序。</translation>
    </message>
    <message>
        <source>light or dark.</source>
        <translation>light（浅色）或 dark（深色）。</translation>
    </message>
    <message>
        <source>Colour of rising bars: red or green.</source>
        <translation>上涨的颜色：red（红）或 green（绿）。</translation>
    </message>
    <message>
        <source>zh or en.</source>
        <translation>zh（中文）或 en（英文）。</translation>
    </message>
    <message>
        <source>Writes a picture instead of opening a window; needs no display.</source>
        <translation>不打开窗口而写出图片；不需要显示器。</translation>
    </message>
    <message>
        <source>Size of the window or picture in pixels.</source>
        <translation>窗口或图片的大小，以像素计。</translation>
    </message>
    <message>
        <source>How long a snapshot waits for the overlays' data.</source>
        <translation>写图片时等待叠加层数据的时间。</translation>
    </message>
    <message>
        <source>Goes on with a practice, a recorded day with an account of its own; --replay is its speed.</source>
        <translation>继续一次练习，即用单独的账户交易一个历史交易日；--replay 为其倍速。</translation>
    </message>
    <message>
        <source>Plays a recorded day as today, 1 to 600 times as fast; for --period minute, which it implies. A --ledger must be one that practises the day.</source>
        <translation>把一个历史交易日当作今天回放，1 到 600 倍速；用于 --period minute，此项自动生效。--ledger 须是练习当日的账本。</translation>
    </message>
    <message>
        <source>Plays the day at once up to this minute; a snapshot stops there, else at the end.</source>
        <translation>直接回放到这一分钟；写图片时停在此处，缺省为收盘。</translation>
    </message>
    <message>
        <source>&quot;HHMM buy|sell QUANTITY PRICE&quot;: placed when the replay has come to that minute; may be given several times.</source>
        <translation>“HHMM buy|sell 数量 价格”：回放到这一分钟时下单；可重复给出。</translation>
    </message>
    <message>
        <source>--%1 is &quot;%2&quot;, but must be %3</source>
        <translation>--%1 的值为“%2”，但应为：%3</translation>
    </message>
    <message>
        <source>the --order of %1 would never be placed: the picture of --snapshot is taken at %2, where the replay stops; see --replay-to</source>
        <translation>%1 的 --order 不会被下单：--snapshot 的图片在回放停止的 %2 截取；见 --replay-to</translation>
    </message>
    <message>
        <source>--practice says itself what --%1 would: leave that out</source>
        <translation>--practice 已经决定了 --%1 的内容：请去掉该选项</translation>
    </message>
    <message>
        <source>--%1 needs --replay</source>
        <translation>--%1 需要与 --replay 一起使用</translation>
    </message>
    <message>
        <source>--replay plays minutes: --period must be minute or be left out</source>
        <translation>--replay 回放分时：--period 应为 minute 或不写</translation>
    </message>
    <message>
        <source>Chart terminal with the account's cost, trades and orders.
To bring bars of your own: tradeterminal bars import --help.</source>
        <translation>行情图终端，显示账户的成本、成交和委托。
导入自己的行情：tradeterminal bars import --help。</translation>
    </message>
    <message>
        <source>Shows prices before ex-dates adjusted, by actions/CODE.csv of the data folder.</source>
        <translation>按数据文件夹中的 actions/CODE.csv 显示前复权价格。</translation>
    </message>
    <message>
        <source>Does not start a message broker.</source>
        <translation>不启动消息代理。</translation>
    </message>
    <message>
        <source>Hides the account's cost and quantities.</source>
        <translation>隐藏账户的成本和数量。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no option; see --help</source>
        <translation>“%1”不是选项；见 --help</translation>
    </message>
    <message>
        <source>--data must name a folder with securities.csv, daily/ and minute/</source>
        <translation>--data 应指向含有 securities.csv、daily/ 和 minute/ 的文件夹</translation>
    </message>
</context>
<context>
    <name>PlannedOrder</name>
    <message>
        <source>HHMM buy|sell QUANTITY PRICE with a trading minute, e.g. &quot;1000 buy 500 13.35&quot;</source>
        <translation>HHMM buy|sell 数量 价格，时间为交易分钟，例如 &quot;1000 buy 500 13.35&quot;</translation>
    </message>
</context>
</TS>
