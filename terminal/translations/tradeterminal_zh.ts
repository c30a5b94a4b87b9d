<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>BarFile</name>
    <message>
        <source>&quot;%1&quot; is not a number</source>
        <translation>“%1”不是数字</translation>
    </message>
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
        <source>&quot;%1&quot; is not a date of the form yyyymmdd</source>
        <translation>“%1”不是 yyyymmdd 形式的日期</translation>
    </message>
    <message>
        <source>the day %1 is not later than the one before</source>
        <translation>日期 %1 不晚于前一行</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a time of the form hhmm</source>
        <translation>“%1”不是 hhmm 形式的时间</translation>
    </message>
    <message>
        <source>the time %1 is outside of the trading hours</source>
        <translation>时间 %1 不在交易时段内</translation>
    </message>
    <message>
        <source>the time %1 is not later than the one before</source>
        <translation>时间 %1 不晚于前一行</translation>
    </message>
    <message>
        <source>%1: holds no bars</source>
        <translation>%1：没有行情数据</translation>
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
    <name>Terminal::ChartView</name>
    <message>
        <source>Volume, highest %1</source>
        <translation>成交量  最高 %1</translation>
    </message>
</context>
<context>
    <name>Terminal::MainWindow</name>
    <message>
        <source>Security</source>
        <translation>证券</translation>
    </message>
    <message>
        <source>Day</source>
        <translation>日线</translation>
    </message>
    <message>
        <source>Hide amounts</source>
        <translation>隐藏金额</translation>
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
        <source>Export picture</source>
        <translation>导出图片</translation>
    </message>
    <message>
        <source>Chart</source>
        <translation>图表</translation>
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
    <name>Terminal::Snapshot</name>
    <message>
        <source>No picture was written: after %1 s there is still no %2.</source>
        <translation>未生成图片：%1 秒后仍没有%2。</translation>
    </message>
</context>
<context>
    <name>Terminal::TerminalProgram</name>
    <message>
        <source>trading module that answers on the bus</source>
        <translation>总线上应答的交易模块</translation>
    </message>
</context>
<context>
    <name>Terminal::TradeModuleProcess</name>
    <message>
        <source>The trading module has ended (exit code %1) and is started again.</source>
        <translation>交易模块已退出（退出码 %1），正在重新启动。</translation>
    </message>
    <message>
        <source>The trading module %1 cannot be started: %2</source>
        <translation>交易模块 %1 无法启动：%2</translation>
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
    <name>main</name>
    <message>
        <source>there is no display; --snapshot FILE.png needs none</source>
        <translation>没有显示器；--snapshot FILE.png 不需要显示器</translation>
    </message>
</context>
</TS>
