// SPDX-License-Identifier: Apache-2.0
#include "HVByteView.h"
#include "TestMain.h"

using namespace Hovlets;

class tst_HVByteView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldReadNumbers()
    {
        QCOMPARE(m_view.byte(1), quint8(0x02));
        QCOMPARE(m_view.big16(0), quint16(0x0102));
        QCOMPARE(m_view.big32(1), quint32(0x02030405));
        QCOMPARE(m_view.big64(1), quint64(0x0203040506070809));
        QCOMPARE(m_view.little16(0), quint16(0x0201));
        QCOMPARE(m_view.little32(1), quint32(0x05040302));
    }

    void shouldReadZeroUnlessTheWholeNumberIsInside()
    {
        QCOMPARE(m_view.big32(5), quint32(0x06070809));
        QCOMPARE(m_view.big32(6), quint32(0));
        QCOMPARE(m_view.little16(8), quint16(0));
        QCOMPARE(m_view.byte(std::numeric_limits<qint64>::max()), quint8(0));
        QCOMPARE(HVByteView().big64(0), quint64(0));
    }

    void shouldRecogniseText()
    {
        const HVByteView view("RIFF", 4);
        QVERIFY(view.hasText(0, "RI"));
        QVERIFY(view.hasText(2, "FF"));
        QVERIFY(!view.hasText(2, "FFF"));
        QVERIFY(!view.hasText(0, "ri"));
    }

    void shouldNarrowWithinTheBytes()
    {
        QCOMPARE(m_view.from(7).size(), qint64(2));
        QCOMPARE(m_view.from(7).big16(0), quint16(0x0809));
        QCOMPARE(m_view.from(20).size(), qint64(0));
        QCOMPARE(m_view.left(3).size(), qint64(3));
        QCOMPARE(m_view.left(3).big32(0), quint32(0));
        QCOMPARE(m_view.left(20).size(), qint64(9));
    }

private:
    const QByteArray m_bytes = QByteArrayLiteral("\x01\x02\x03\x04\x05\x06\x07\x08\x09");
    const HVByteView m_view { m_bytes };
};

HOVLETS_TEST_MAIN(tst_HVByteView)

#include "tst_hvbyteview.moc"
