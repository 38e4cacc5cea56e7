// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/sample/SampleWords.h"

namespace KODMS::Services {

namespace {

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(QLatin1Char(' '));
}

} // namespace

const QStringList &SampleWords::surnames()
{
    static const QStringList list = words("王 李 张 刘 陈 杨 黄 赵 周 吴 徐 孙 马 朱 胡 郭 何 林 "
                                          "罗 高 梁 郑 谢 宋 唐 许 邓 冯 韩 曹");
    return list;
}

const QStringList &SampleWords::givenNames()
{
    static const QStringList list =
        words("伟 芳 娜 敏 静 丽 强 磊 军 洋 勇 艳 杰 娟 涛 明 超 秀兰 霞 平 "
              "刚 桂英 志强 建华 晓燕 海波 文博 子轩 雨桐 国庆 小龙 春梅");
    return list;
}

const QStringList &SampleWords::cities()
{
    static const QStringList list =
        words("深圳 东莞 广州 惠州 珠海 苏州 昆山 无锡 上海 杭州 宁波 厦门 "
              "成都 重庆 武汉 长沙 西安 北京 天津 青岛 大连 南京 合肥 佛山");
    return list;
}

const QStringList &SampleWords::trades()
{
    static const QStringList list =
        words("华信 联创 宏达 精密 恒通 捷创 天翼 博远 鼎盛 金鹏 瑞丰 方正 佳讯 兴旺 中科 远景 "
              "创维 光华 明达 三友 新宇 长城 飞腾 星河");
    return list;
}

const QStringList &SampleWords::companyForms()
{
    static const QStringList list =
        words("电子 电路 科技 通讯 光电 仪器 汽车电子 医疗 智能 半导体");
    return list;
}

const QStringList &SampleWords::boardNames()
{
    static const QStringList list =
        words("main power sensor ctrl led usb rf motor display adapter "
              "gateway charger bms camera router backplane io cpu ddr wifi "
              "主板 电源板 控制板 显示板 转接板 驱动板 核心板 底板 按键板 接口板");
    return list;
}

const QStringList &SampleWords::remarks()
{
    static const QStringList list =
        words("加急 客户要求阻抗控制 拼版2x3 沉金工艺 注意BGA阻焊桥 板厚1.6mm 周五前交 "
              "与上一版对比差异 需要补偿线宽 过孔塞油 无铅喷锡 已电话确认叠层 等待客户回复 "
              "字符合并到阻焊层 外形公差±0.1 按IPC三级");
    return list;
}

const QStringList &SampleWords::sources()
{
    static const QStringList list =
        words("邮件 微信 官网下单 销售转交 客户FTP 老单返单 展会 电话下单");
    return list;
}

const QStringList &SampleWords::questionTitles()
{
    static const QStringList list =
        words("钻孔与焊盘不符 缺少外形层 阻焊开窗过大 线宽小于能力 层序不明确 字符压焊盘 "
              "叠层厚度矛盾 孔径未标注");
    return list;
}

const QStringList &SampleWords::questionTexts()
{
    static const QStringList list =
        words("请客户确认后继续 按最小线宽0.1mm处理是否可以 外形以机械1层为准吗 "
              "建议开窗单边缩小0.05mm 第3层与第4层顺序请确认 是否允许移动字符 "
              "叠层表与说明文件不一致 未标注的孔按0.3mm处理");
    return list;
}

QString SampleWords::gerberMark()
{
    return QStringLiteral("_gerber");
}

} // namespace KODMS::Services
