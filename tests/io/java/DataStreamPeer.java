// The JVM side of the data stream interoperation test. "write FILE" writes the values below
// with java.io.DataOutputStream; "check FILE" reads them back with java.io.DataInputStream and
// exits with 1, naming the first difference, when the file holds anything else.
import java.io.*;

public class DataStreamPeer {
    static final int[] INTS = {0, 1, -1, 16909060, Integer.MIN_VALUE, Integer.MAX_VALUE};
    static final short[] SHORTS = {0, -2, Short.MAX_VALUE, Short.MIN_VALUE};
    static final boolean[] BOOLS = {true, false};
    static final String[] STRINGS = {"", "plain", "\u00e9t\u00e9", "\u20ac \u2713 \u4e2d\u6587",
                                     "\u0800\u07ff\u0080\u007f\ud7ff\ue000\ufffd",
                                     "\u20ac".repeat(21845)};

    public static void main(String[] args) throws IOException {
        if (args[0].equals("write")) {
            try (DataOutputStream out = new DataOutputStream(new FileOutputStream(args[1]))) {
                for (int v : INTS) out.writeInt(v);
                for (short v : SHORTS) out.writeShort(v);
                for (boolean v : BOOLS) out.writeBoolean(v);
                for (String v : STRINGS) out.writeUTF(v);
            }
            return;
        }
        try (DataInputStream in = new DataInputStream(new FileInputStream(args[1]))) {
            for (int v : INTS) expect("int", v, in.readInt());
            for (short v : SHORTS) expect("short", v, in.readShort());
            for (boolean v : BOOLS) expect("boolean", v, in.readBoolean());
            for (String v : STRINGS) expect("string", v, in.readUTF());
            expect("end of data", -1, in.read());
        }
    }

    static void expect(String what, Object expected, Object actual) {
        if (!expected.equals(actual)) {
            System.err.println(what + ": expected " + expected + ", read " + actual);
            System.exit(1);
        }
    }
}
