module crossbar #(parameter PORTS = `PORTS, parameter DW = `DW) (
  input  wire                clk,
  input  wire                rst,
  input  wire [PORTS*DW-1:0] s_data,
  input  wire [PORTS-1:0]    s_valid,
  output wire [PORTS*DW-1:0] m_data,
  output wire [0:PORTS-1]    m_valid
);
  genvar m;
  generate
    for (m = 0; m < PORTS; m = m + 1) begin : master
      wire [PORTS-1:0] grant;
      wire             any;
      reg  [DW-1:0]    stage [0:1];
      arbiter #(.PORTS(PORTS)) arb (clk, rst, s_valid, grant, any);
      if (m % 2 == 0) begin : even
        fifo buffer (.clk(clk), .rst(rst), .d(stage[1]), .q(m_data[m*DW +: DW]));
        defparam buffer.W = DW;
      end else begin : odd
        assign m_data[m*DW +: DW] = stage[1];
      end
      always @(posedge clk) begin
        stage[0] <= s_data[m*DW +: DW];
        stage[1] <= stage[0];
      end
      assign m_valid[m] = any;
    end
  endgenerate
endmodule

module fifo (clk, rst, d, q);
  parameter W = 8;
  parameter DEPTH = 16;
  input clk, rst;
  input [W-1:0] d;
  output [W-1:0] q;
  (* ram_style = "block" *) reg [W-1:0] ram [0:DEPTH-1];
  reg [$clog2(DEPTH)-1:0] head, tail;
  RAMB36E1 bram (.CLKARDCLK(clk), .DIADI(d[0]));
  defparam bram.INIT_00 = 256'h0, bram.WRITE_MODE_A = "READ_FIRST";
  always @(posedge clk)
    if (rst) begin head <= 0; tail <= 0; end
    else begin ram[head] <= d; head <= head + 1; tail <= head; end
  assign q = ram[tail];
endmodule

module fabric_top (input wire clk, input wire rst, inout wire [3:0] gpio,
                   input wire [`PORTS*`DW-1:0] in, output wire [`PORTS*`DW-1:0] out);
  wire clk_buf;
  wire [`PORTS-1:0] valid = {`PORTS{1'b1}};
  BUFG bufg (.I(clk), .O(clk_buf));
  IOBUF #(.IOSTANDARD("LVCMOS33"), .DRIVE(12)) pads [3:0] (.IO(gpio), .I(valid), .T(1'b0), .O());
  crossbar xbar (.clk(clk_buf), .rst(rst), .s_data(in), .s_valid(valid), .m_data(out), .m_valid());
endmodule
